// SPDX-License-Identifier: MIT
// Power cuts, and memory that ends while a library is loaded, as storage.c simulates them.
#include "run/ProgramFixture.h"

using programtest::CountOf;

namespace {

const std::string shim = "ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" STORAGE_SHIM " ";

class Storage : public programtest::ProgramTest {};

}  // namespace

TEST_F(Storage, PowerCutCostsNoFormerEntry) {
    for (const std::string moment : {"exchange", "rename"}) {
        SCOPED_TRACE(moment);
        for (const char* folder : {"plate", "out"}) {
            std::filesystem::remove_all(Path(folder));
            temp.MakeFolder(folder);
        }
        MakeSample("plate/a.rsd");
        MakeSample("plate/b.rsd");
        ASSERT_EQ(Run("-IP plate -OD out -BC -ABD").exitCode, 0);
        EXPECT_GT(Run("-IP plate -OD out -SCF", shim + "STORAGE_CUT=" + moment).exitCode, 127);
        ASSERT_EQ(Run("-IP plate -OD out -FA").exitCode, 0);
        const std::string log = temp.Read("plate/log.xml");
        for (const char* extension : {".esd", ".abd", ".seq"})
            EXPECT_EQ(CountOf(std::string(extension) + "\t\t\r\n", log), 2u) << extension << " in\n" << log;
        // Even if nothing of the log has reached the disk.
        temp.Write("plate/log.xml", "");
        ASSERT_EQ(Run("-IP plate -OD out -RAW_TXT").exitCode, 0);
        EXPECT_EQ(CountOf(".esd\t\t\r\n", temp.Read("plate/log.xml")), 2u);
        // Where the log is rewritten in place, its former state stays as long as it is the better one.
        temp.Write("plate/log.xml", "");
        ASSERT_EQ(Run("-IF plate/a.rsd -OD out -RAW_TXT", shim + "STORAGE_MACHINE=node").exitCode, 0);
        for (const char* state : {"plate/log.xml", "plate/log.xml.temp"})
            EXPECT_EQ(CountOf(".esd\t\t\r\n", temp.Read(state)), 2u) << state;
    }
}

#ifndef __SANITIZE_ADDRESS__
// Where the loading fails, nothing of the library may stay in memory: an exception that passes through it would end the
// process.
TEST_F(Storage, LackOfMemoryWhileALibraryIsLoadedLeavesNothingOfIt) {
    std::filesystem::remove(Path("bin/tenth.so"));
    Copy(LANEWRIGHT_TEST_LIBRARIES "/hostile.so", "bin/tenth.so");
    MakeSample("plate/a.rsd", 500, 30);
    constexpr int allocations = 40;
    int succeeded = 0;
    for (int i = 1; i <= allocations; ++i) {
        const auto run =
            Run("-IP plate -OD out -BC",
                shim + "MISCHIEF=throws MISCHIEF_AT=ExecuteProcedure STORAGE_LOADING=" + std::to_string(i));
        EXPECT_LE(run.exitCode, 1) << "allocation " << i << ": " << run.errors;
        EXPECT_GE(run.exitCode, 0) << "allocation " << i << ": " << run.errors;
        succeeded += run.exitCode == 0;
    }
    EXPECT_GE(succeeded, allocations / 2);
}
#endif
