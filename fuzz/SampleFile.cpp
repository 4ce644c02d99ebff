// SPDX-License-Identifier: MIT
// A sample file: is loaded as a raw and as a processed sample, stored again and exported. A stored sample must be
// readable.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include "Fuzz.h"

#include "plugins/BaseCaller.h"
#include "plugins/BaseCallerSet.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"
#include "samplestore/TraceFile.h"
#include "support/TempFolder.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto& folder = fuzz::Folder();
    folder.Write("x.rsd", fuzz::Text(data, size));
    CRunDriver driver(1);
    driver.unattended = 1;
    driver.baseCallers = std::make_unique<CBaseCallerSet>(&driver);
    driver.baseCallers->callers.push_back(std::make_unique<CBaseCaller>());
    driver.baseCallers->currentCaller = driver.baseCallers->callers.back().get();
    CPlate plate(folder.Path(), {}, &driver);
    plate.outputFolder = folder.MakeFolder("out");

    CSampleFile sample("x.rsd", &plate);
    sample.Load(folder.Path("x.rsd"), 0);
    sample.ExportText(*sample.rawTrace);
    CTraceFile& holder = *sample.CreateProcessedTrace(folder.Path("x.rsd"), 1, nullptr);
    sample.LoadProcessed(holder, 1);
    holder.path = folder.Path("out/x.esd");
    const bool isStored = holder.trace->HasChannels() && sample.SaveProcessedSample(holder, 5) != 0;
    sample.ExportAbd(holder, 0);
    sample.ExportScf(holder);
    sample.ExportFasta(&holder, "", 1);
    sample.ExportText(holder);

    CSampleFile again("x.rsd", &plate);
    CTraceFile& stored = *again.CreateProcessedTrace(holder.path, 1, nullptr);
    fuzz::Demand(!isStored || (again.LoadProcessed(stored, 1) != 0 && stored.trace->HasChannels()));
    sample.SaveFailedSample(holder);
    std::filesystem::remove_all(folder.Path());
    std::filesystem::create_directory(folder.Path());
    return 0;
}
