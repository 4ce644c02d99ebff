// SPDX-License-Identifier: MIT
// lanetools report as a user runs it; what the page makes of its data is tested in a browser.
#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "lanetools/report/Packed.h"
#include "tools/ToolsFixture.h"

namespace {

class Report : public toolstest::ToolsTest {
  protected:
    void SetUp() override {
        temp.MakeFolder("p");
        temp.MakeFolder("out/p_X_QX1");
        WriteSampleOf("p/a.rsd", "A01", "");
        WriteSampleOf("p/b.rsd", "A02", "");
        WriteSampleOf("out/p_X_QX1/a.fsd", "A01", "No </script> signal");
    }
    void WriteSampleOf(const std::string& name, const std::string& well, const std::string& error) const {
        CSampleInfo info = sampletest::RawInfo(10);
        info.wellId = info.sampleName = well;
        info.plateColumns = 24;
        info.plateRows = std::numeric_limits<std::int32_t>::max();
        info.processed = !error.empty();
        info.analysis.basecallError = error;
        ASSERT_EQ(WriteSample(Path(name), info, sampletest::NumberedScans(10)), 0) << name;
    }
    int Make(const std::string& words) const { return Run(LANETOOLS_PROGRAM " report " + words); }
    nlohmann::json Data(const std::string& page) const {
        const std::string text = temp.Read(page), start = "id=\"plate\">";
        const std::size_t at = text.find(start) + start.size();
        return nlohmann::json::parse(text.substr(at, text.find("</script>", at) - at));
    }
    bool Exists(const std::string& name) const { return std::filesystem::exists(Path(name)); }
};

TEST_F(Report, OnePlateIsOneFile) {
    ASSERT_EQ(Make("out --raw p -o page.html"), 0) << temp.Read("printed");
    EXPECT_EQ(temp.Read("printed"), "page.html\n");
    const nlohmann::json plate = Data("page.html");
    EXPECT_EQ(plate["columns"], 24);
    EXPECT_EQ(plate["rows"], 8);  // no size of a plate
    ASSERT_EQ(plate["samples"].size(), 2u);
    EXPECT_EQ(plate["samples"][0]["reason"], "No </script> signal");
    EXPECT_EQ(plate["samples"][1]["state"], "missing");
    for (const auto& sample : plate["samples"])
        EXPECT_TRUE(sample.contains("raw")) << sample;
    const std::string first = temp.Read("page.html");
    ASSERT_EQ(Make("out --raw p -o page.html"), 0);
    EXPECT_EQ(temp.Read("page.html"), first);
    ASSERT_EQ(Make("out --raw p --no-raw -o page.html"), 0);
    EXPECT_EQ(Data("page.html")["samples"].size(), 2u);
    EXPECT_FALSE(Data("page.html")["samples"][0].contains("raw"));
    ASSERT_EQ(Make("out -o page.html"), 0);
    EXPECT_EQ(Data("page.html")["samples"].size(), 1u);
}

TEST_F(Report, SeveralPlatesAreAFolder) {
    temp.MakeFolder("more/p_X_QX1");
    std::filesystem::copy(Path("out/p_X_QX1/a.fsd"), Path("more/p_X_QX1/a.fsd"));
    ASSERT_EQ(Make("out more -o pages"), 0) << temp.Read("printed");
    EXPECT_TRUE(Exists("pages/p_X_QX1.html"));
    EXPECT_TRUE(Exists("pages/p_X_QX1_2.html"));  // of the same name, from another root
    ASSERT_EQ(Make("out -o pages"), 0);           // a folder stays one
    EXPECT_EQ(Make("out more -o pages/p_X_QX1.html"), 2);
    EXPECT_NE(temp.Read("printed").find("several plates need a folder"), std::string::npos) << temp.Read("printed");
}

TEST_F(Report, IsRefusedBeforeAnythingIsWritten) {
    for (const char* words : {"out", "out -o nowhere/page.html", "nowhere -o page.html", "out -o p/a.rsd",
                              "out -o out/p_X_QX1/a.fsd", "out -o /dev/null", "p -o page.html", "out -o ''"})
        EXPECT_EQ(Make(words), 2) << words << temp.Read("printed");
    EXPECT_FALSE(Exists("page.html"));
    EXPECT_EQ(sampletest::XorOfFile(Path("p/a.rsd")), 0u);
}

TEST(PackedCurve, IsCloseToItsValues) {
    constexpr float top = 1000;
    std::vector<float> values{-5, std::nanf(""), 1e30f, -std::numeric_limits<float>::infinity()};
    for (int i = 0; i < 2000; ++i)
        values.push_back(500 + 520 * std::sin(static_cast<float>(i * i) / 3000));
    std::vector<std::uint8_t> bytes;
    lanetools::AppendCurve(bytes, values, top);
    ASSERT_EQ(bytes.size(), values.size());
    std::uint8_t level = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        level = static_cast<std::uint8_t>(level + bytes[i]);
        const float value = std::isnan(values[i]) ? 0 : std::clamp(values[i] / top, 0.0f, 1.0f);
        EXPECT_NEAR(level, value * 255, 1.5) << i;
    }
    bytes.clear();
    lanetools::AppendCurve(bytes, values, 0);
    EXPECT_EQ(bytes, std::vector<std::uint8_t>(values.size(), 0));
}

}  // namespace
