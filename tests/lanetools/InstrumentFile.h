// SPDX-License-Identifier: MIT
// ABIF files as an instrument leaves them, made through the trace writer.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tracewriter/ClassTable.h"
#include "tracewriter/IAbdWriter.h"

namespace lanetoolstest {

using Shorts = std::vector<std::int16_t>;

// A run of six scans. A test changes what it is about.
struct CInstrumentFile {
    std::map<std::pair<std::string, int>, Shorts> curves{{{"DATA", 1}, {1, 2, 3, 4, 5, 6}},
                                                         {{"DATA", 2}, {7, 8, 9, 9, 9, 9}},
                                                         {{"DATA", 3}, {0, 0, 0, 0, 0, 0}},
                                                         {{"DATA", 4}, {5, 5, 5, 5, 5, 5}}};
    std::map<std::pair<std::string, int>, std::string> texts{{{"FWO_", 1}, "GATC"}, {{"SMPL", 1}, "sample"}};
    std::map<std::string, std::int16_t> numbers;
    std::map<int, std::vector<std::uint8_t>> clocks;   // RUNT: hours, minutes, seconds
    std::map<int, std::pair<std::int16_t, int>> days;  // RUND: year, and month + 256 * day

    CInstrumentFile& Text(const std::string& name, const std::string& text, int number = 1) {
        texts[{name, number}] = text;
        return *this;
    }
    void Moment(int number, std::int16_t year, int month, int day, std::vector<std::uint8_t> time) {
        days[number] = {year, month + 256 * day};
        clocks[number] = std::move(time);
    }

    std::string Write(const std::string& path) const {
        const CInstance<IAbdWriter> writer;
        std::int32_t opened = 0, status = 0;
        EXPECT_EQ(writer->OpenFile(path, 0, opened), S_OK);
        for (const auto& [tag, curve] : curves)
            Add(*writer.operator->(), tag.first, tag.second, Array<std::int16_t>(curve));
        for (const auto& [tag, text] : texts)
            Add(*writer.operator->(), tag.first, tag.second, text);
        for (const auto& [name, number] : numbers)
            Add(*writer.operator->(), name, 1, number);
        for (const auto& [number, day] : days)
            Add(*writer.operator->(), "RUND", number,
                Array<std::int16_t>({static_cast<std::int16_t>(day.second), day.first}));
        for (const auto& [number, clock] : clocks)
            Add(*writer.operator->(), "RUNT", number, Array<std::uint8_t>({0, clock[2], clock[1], clock[0]}));
        EXPECT_EQ(writer->CloseFile(status), S_OK);
        return path;
    }

  private:
    template <class Element>
    static CTagValue Array(const std::vector<Element>& values) {
        auto array = CTagArray<Element>::Create(static_cast<std::int32_t>(values.size()));
        EXPECT_EQ(array->Fill(values), S_OK);
        return *array;
    }
    static void Add(IAbdWriter& writer, const std::string& name, int number, const CTagValue& value) {
        EXPECT_EQ(writer.AddTag(name, number, value), S_OK);
    }
};

}  // namespace lanetoolstest
