// The tags of an ABD file that describe the sample, its plate and its run. Each raises CComError when the writer fails.
#pragma once

#include <cstdint>

#include "samplestore/SampleFile.h"
#include "tracewriter/IAbdWriter.h"

// Lane of a well: 1 for the last well of the plate, then up the rows and from column to column to the first well.
std::int32_t LaneOf(const CSampleInfo& info);

// "CMBF", "CMNT", "CTTL".
void WriteCommentTags(IAbdWriter& writer, const CSampleInfo& info);
// "EVNT" to "MODL".
void WriteRunTags(IAbdWriter& writer, const CSampleFile& sample);
// "NChn" and "NLNE".
void WritePlateTags(IAbdWriter& writer, const CSampleInfo& info);
// "PDMF".
void WriteChemistryTags(IAbdWriter& writer, const CSampleInfo& info);
// "RUND" to "SVER" 1.
void WriteSampleTags(IAbdWriter& writer, const CSampleInfo& info);
