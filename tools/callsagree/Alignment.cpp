// SPDX-License-Identifier: MIT
#include "callsagree/Alignment.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "callsagree/AmbiguityCodes.h"

namespace callsagree {

namespace {

enum Step : std::uint8_t { diagonal, deletion, insertion };

// The last step of the best alignment of the first i true bases (row) with the first j called bases (column).
class CSteps {
  public:
    CSteps(std::size_t rows, std::size_t columnCount) : columns(columnCount), steps(rows * columnCount) {}
    std::uint8_t* Row(std::size_t row) { return steps.data() + row * columns; }
    Step At(std::size_t row, std::size_t column) const { return static_cast<Step>(steps[row * columns + column]); }

  private:
    std::size_t columns;
    std::vector<std::uint8_t> steps;
};

// Whether the called letter is right. `standsFor` has the letters of an ambiguity code in the truth.
bool Agrees(char base, std::string_view standsFor, char called) {
    return called == base || standsFor.find(called) != std::string_view::npos;
}

// Adds one true base to the alignments. scores[j] is the score of the best alignment of all true bases so far with the
// first j called bases; scores[0] stays 0, since the start may overhang.
void AddTrueBase(char base, std::string_view call, std::vector<int>& scores, std::uint8_t* steps) {
    const std::string_view standsFor = LettersOfCode(base);
    int before = scores[0];  // the score without this true base and without called base j
    int left = scores[0];
    for (std::size_t j = 1; j <= call.size(); ++j) {
        const int match = before + (Agrees(base, standsFor, call[j - 1]) ? 1 : -1);
        const int skipTrue = scores[j] - 1;
        const int skipCalled = left - 1;
        const int upper = std::max(match, skipTrue);
        const int upperStep = match >= skipTrue ? diagonal : deletion;
        before = scores[j];
        left = std::max(upper, skipCalled);
        steps[j] = static_cast<std::uint8_t>(upper >= skipCalled ? upperStep : insertion);
        scores[j] = left;
    }
}

// Follows the steps back from the cell (i, j) until one of the sequences is used up. The rest of the other is its
// overhang.
void CountColumns(std::string_view truth, std::string_view call, const CSteps& steps, std::size_t i, std::size_t j,
                  Agreement& counts) {
    while (i > 0 && j > 0) {
        const Step step = steps.At(i, j);
        if (step == diagonal)
            ++(Agrees(truth[i - 1], LettersOfCode(truth[i - 1]), call[j - 1]) ? counts.matches : counts.substitutions);
        else
            ++(step == deletion ? counts.deletions : counts.insertions);
        if (step != insertion) --i;
        if (step != deletion) --j;
    }
}

double Percent(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
}

}  // namespace

double Agreement::Identity() const {
    return Percent(matches, Covered() + insertions);
}

double Agreement::Coverage() const {
    return Percent(Covered(), truth);
}

Agreement& Agreement::operator+=(const Agreement& other) {
    truth += other.truth;
    called += other.called;
    matches += other.matches;
    substitutions += other.substitutions;
    insertions += other.insertions;
    deletions += other.deletions;
    return *this;
}

Agreement Align(std::string_view truth, std::string_view call) {
    constexpr std::size_t maxCells = std::size_t{1} << 30;
    if (!call.empty() && truth.size() > maxCells / call.size())
        throw std::runtime_error("sequences too long to be aligned");
    CSteps steps(truth.size() + 1, call.size() + 1);
    std::vector<int> scores(call.size() + 1);
    // The alignment ends where the truth ends or where the call ends.
    int best = 0;
    std::size_t bestTrue = 0, bestCalled = 0;
    for (std::size_t i = 1; i <= truth.size(); ++i) {
        AddTrueBase(truth[i - 1], call, scores, steps.Row(i));
        if (scores.back() > best) {
            best = scores.back();
            bestTrue = i;
            bestCalled = call.size();
        }
    }
    for (std::size_t j = 1; j <= call.size(); ++j) {
        if (scores[j] > best) {
            best = scores[j];
            bestTrue = truth.size();
            bestCalled = j;
        }
    }
    Agreement counts{.truth = truth.size(), .called = call.size()};
    CountColumns(truth, call, steps, bestTrue, bestCalled, counts);
    return counts;
}

}  // namespace callsagree
