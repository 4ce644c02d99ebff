// SPDX-License-Identifier: MIT
// The tags of an ABD file that describe the sample, its plate and its run. docs/abd.md lists what each tag contains.
// All throw CComError when the writer fails.
#pragma once

#include <cstdint>

#include "samplestore/SampleFile.h"
#include "samplestore/SampleInfo.h"
#include "tracewriter/IAbdWriter.h"

// The lane number of the sample's well, 1 to 256: lanes count from the last well of the plate up its column, then up
// the column before, to the first well.
std::int32_t LaneOf(const CSampleInfo& info);

// Adds "CMBF", "CMNT" and "CTTL".
void WriteCommentTags(IAbdWriter& writer, const CSampleInfo& info);
// Adds "EVNT", "FWO_", "GELN", "GELP", "LANE", "MCHN" and "MODL". The sample's plate must be there.
void WriteRunTags(IAbdWriter& writer, const CSampleFile& sample);
// Adds "NChn" and "NLNE".
void WritePlateTags(IAbdWriter& writer, const CSampleInfo& info);
// Adds "PDMF" 1 and 2.
void WriteChemistryTags(IAbdWriter& writer, const CSampleInfo& info);
// Adds "RUND", "RUNT", "SMPL", "SMPR" and "SVER" 1.
void WriteSampleTags(IAbdWriter& writer, const CSampleInfo& info);
