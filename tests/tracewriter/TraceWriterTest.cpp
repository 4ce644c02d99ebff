// SPDX-License-Identifier: MIT
// The trace writer by itself: what it is given and what is on disk afterwards.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/PlainUser.h"
#include "support/TempFolder.h"
#include "tracewriter/ClassTable.h"
#include "tracewriter/IAbdWriter.h"
#include "tracewriter/IScfSamples.h"
#include "tracewriter/IScfWriter.h"
#include "tracewriter/TraceReaders.h"

namespace {

class TraceWriterTest : public testing::Test {
  protected:
    testsupport::TempFolder temp;
    const std::string folder = temp.Path();

    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }
};

CTagValue Shorts(const std::vector<std::int16_t>& values) {
    auto array = CShortsArray::Create(static_cast<std::int32_t>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(array->Put(i, values[i]), S_OK);
    return *array;
}

HRESULT WriteSmallAbd(const std::string& path) {
    const CInstance<IAbdWriter> writer;
    std::int32_t opened = 0, status = 0;
    if (const HRESULT result = writer->OpenFile(path, 0, opened); result < 0) {
        EXPECT_EQ(opened, 0);
        return result;
    }
    EXPECT_EQ(writer->AddTag("DATA", 1, Shorts(std::vector<std::int16_t>(5000, 7))), S_OK);
    return writer->CloseFile(status);
}

TEST_F(TraceWriterTest, ScfHoldsWhatWasSent) {
    const CInstance<IScfWriter> writer;
    auto* const taker = writer.Find<IScfSamples>();
    ASSERT_NE(taker, nullptr);
    EXPECT_EQ(writer->SetSampleSize(8), E_INVALIDARG);
    EXPECT_EQ(writer->SetSampleCount(3), S_OK);
    EXPECT_EQ(writer->SetSample(8, 7, -5, 65536, 0), S_OK);  // for writers without IScfSamples
    EXPECT_EQ(writer->SetSample(0, 0, 0, 0, 3), DISP_E_BADINDEX);
    EXPECT_EQ(writer->AddBase(-1, 0, 0, 0, 0, 'N'), S_OK);
    const std::vector<std::int32_t> a{70000, 2}, c{-1, 3}, g{4, 5}, t{6, 65535};
    EXPECT_EQ(taker->SetSamples({a, c, g, t}, 1), S_OK);
    const std::vector<std::int32_t> none, four(4, 9);
    EXPECT_EQ(taker->SetSamples({none, none, none, none}, 3), S_OK);
    for (const std::int32_t outside : {-1, 2, 4, 2147483647})
        EXPECT_EQ(taker->SetSamples({a, c, g, t}, outside), DISP_E_BADINDEX) << outside;
    EXPECT_EQ(taker->SetSamples({four, four, four, four}, 0), DISP_E_BADINDEX);
    EXPECT_EQ(taker->SetSamples({a, c, g, none}, 0), E_INVALIDARG);
    ASSERT_EQ(writer->SaveFile(folder + "/a.scf"), S_OK);

    const ScfContent scf = ReadScf(folder + "/a.scf");
    EXPECT_EQ(scf.curves, (decltype(scf.curves){{{8, 65535, 2}, {7, 0, 3}, {0, 4, 5}, {65535, 6, 65535}}}));
    EXPECT_EQ(scf.peaks, std::vector<std::uint32_t>{0});
}

TEST_F(TraceWriterTest, AbifStoresEveryForm) {
    const CInstance<IAbdWriter> writer;
    std::int32_t opened = 0, status = 0;
    EXPECT_EQ(writer->AddTag("CMNT", 1, std::string("early")), E_UNEXPECTED);
    ASSERT_EQ(writer->OpenFile(folder + "/a.abd", 0, opened), S_OK);
    EXPECT_NE(opened, 0);
    EXPECT_EQ(writer->AddTag("SMPL", 1, std::string("ab")), S_OK);
    EXPECT_EQ(writer->AddTag("CMNT", 1, std::string(256, 'c')), S_OK);
    EXPECT_EQ(writer->AddTag("CMNT", 2, std::string(255, 'p')), S_OK);
    EXPECT_EQ(writer->AddTag("LANE", 1, std::int16_t{-2}), S_OK);
    EXPECT_EQ(writer->AddTag("DATA", 101, Shorts({1, -1, 300})), S_OK);
    EXPECT_EQ(writer->AddTag("DATA", 2, CTagValue()), S_OK);
    EXPECT_EQ(writer->AddTag("QVAL", 1, Shorts({0, 50, 90, 99, 100})), S_OK);
    EXPECT_EQ(writer->AddTag("LONG_NAME", 1, std::int16_t{0}), E_INVALIDARG);
    ASSERT_EQ(writer->CloseFile(status), S_OK);
    EXPECT_EQ(writer->CloseFile(status), E_UNEXPECTED);

    auto tags = ReadAbif(folder + "/a.abd");
    EXPECT_EQ(tags.size(), 7u);  // the empty one is left out, the qualities are added
    EXPECT_EQ(tags["SMPL1"].data, "\2ab");
    EXPECT_EQ(tags["CMNT1"].Text(), std::string(256, 'c'));
    EXPECT_EQ(tags["CMNT2"].data, std::string(1, '\xFF').append(255, 'p'));
    EXPECT_EQ(tags["LANE1"].Shorts(), std::vector<int>{-2});
    EXPECT_EQ(tags["DATA101"].Shorts(), (std::vector<int>{1, -1, 300}));
    EXPECT_EQ(tags["PCON1"].data, (std::string{0, 3, 10, 20, 40}));
}

TEST_F(TraceWriterTest, FileAppearsWholeOrNotAtAll) {
    {
        const CInstance<IAbdWriter> writer;
        std::int32_t opened = 0;
        ASSERT_EQ(writer->OpenFile(folder + "/a.abd", 0, opened), S_OK);
        EXPECT_FALSE(std::filesystem::exists(folder + "/a.abd"));
    }
    EXPECT_EQ(FilesInFolder(), 0u) << "an export that ends early leaves a file";

    ASSERT_EQ(WriteSmallAbd(folder + "/a.abd"), S_OK);
    // A disk that fills while a file of that name is replaced.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{1000, limit.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const HRESULT result = WriteSmallAbd(folder + "/a.abd");
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(result, HresultFromErrno(EFBIG));
    EXPECT_EQ(CComError(result).ErrorMessage(), "File too large");
    EXPECT_EQ(ReadAbif(folder + "/a.abd")["DATA1"].count, 5000u);
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(TraceWriterTest, PlacesThatCannotBeWritten) {
    std::filesystem::create_directory(folder + "/folder.abd");
    EXPECT_EQ(WriteSmallAbd(folder + "/folder.abd"), HresultFromErrno(EISDIR));
    EXPECT_EQ(WriteSmallAbd(folder + "/missing/a.abd"), HresultFromErrno(ENOENT));
    EXPECT_EQ(CComError(HresultFromErrno(EISDIR)).ErrorMessage(), "Is a directory");
    EXPECT_EQ(FilesInFolder(), 1u);
    std::ofstream(folder + "/protected.abd") << "kept";
    ::chmod((folder + "/protected.abd").c_str(), 0444);
    std::filesystem::create_directory(folder + "/locked");
    ::chmod((folder + "/locked").c_str(), 0555);
    ::chmod(folder.c_str(), 0777);
    const testsupport::PlainUser plainUser;
    EXPECT_EQ(WriteSmallAbd(folder + "/protected.abd"), HresultFromErrno(EACCES));
    EXPECT_EQ(WriteSmallAbd(folder + "/locked/a.abd"), HresultFromErrno(EACCES));
}

TEST(ComErrorTest, ThreeFormsOfText) {
    EXPECT_EQ(CComError(E_POINTER).ErrorMessage(), "Invalid pointer");
    EXPECT_EQ(CComError(HresultFromErrno(ENOSPC)).ErrorMessage(), "No space left on device");
    EXPECT_EQ(CComError(MakeHresult(0x80040201)).ErrorMessage(), "IDispatch error #1");
    EXPECT_EQ(CComError(MakeHresult(0x80049FFF)).ErrorMessage(), "IDispatch error #40447");
    EXPECT_EQ(CComError(MakeHresult(0x80040200)).ErrorMessage(), "Unknown error 0x80040200");
    EXPECT_EQ(CComError(MakeHresult(0x8ABC0001)).ErrorMessage(), "Unknown error 0x8ABC0001");
}

}  // namespace
