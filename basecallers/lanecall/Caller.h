// One conversation about one sample: what was handed over, and what each procedure makes of it.
#pragma once

#include <optional>
#include <string>

#include "lanecall/Annotation.h"
#include "lanecall/CallBases.h"
#include "lanecall/Mobility.h"
#include "lanecall/Quality.h"

namespace lanecall {

constexpr int procedureCount = 6;

class CCaller {
  public:
    // --- what is handed over ---
    // Copies the trace. Arrays that are missing or a negative count give an empty trace.
    void TakeTrace(const double* const* arrays, int channels, int scans, const char* baseOrder);
    // Channels' range to keep to, in scans; one that holds nothing leaves the whole trace.
    void TakeRange(int first, int last);
    // Rows and columns in the order A, C, T, G.
    void TakeMatrix(const float* const* rows);

    // Runs one procedure, in the order of their numbers; false when it failed, and Problem tells why.
    bool Run(int procedure);
    const std::string& Problem() const { return problem; }

    // --- what came of it; empty until the procedure that makes it has run ---
    ScanRange Range() const { return range; }
    Curves& Processed() { return curves; }
    const std::vector<Call>& Calls() const { return calls; }
    char LetterOf(int channel) const { return letters[static_cast<std::size_t>(channel)]; }
    const std::vector<double>& Qualities() const { return qualities; }
    GoodRegion Good() const { return good; }
    double Overall() const { return OverallQuality(qualities, good); }
    // In the order A, C, T, G; none before separation.
    const std::optional<Matrix>& MatrixUsed() const { return matrixUsed; }
    Annotation& Notes() { return notes; }

  private:
    bool Prepare();
    bool SeparateDyes();
    bool Measure();
    bool SharpenPeaks();
    bool Align();
    bool CallRead();
    bool Fail(std::string text);
    // Index in A, C, T, G of each channel, or none when the letters are not those four.
    std::optional<std::array<std::size_t, channelCount>> BaseIndices() const;

    std::array<char, channelCount> letters{'A', 'C', 'T', 'G'};
    std::optional<ScanRange> wanted;
    Matrix given{};  // A, C, T, G
    int done = 0;    // procedures that have run
    std::string problem;

    Curves curves;  // raw at first, processed in the end
    ScanRange range;
    std::optional<Matrix> matrixUsed;
    PerChannel rawNoise{};
    ImpulseLists impulses;
    Spacing spacing;
    std::array<CTrack, channelCount> noise;  // deviation of the noise where a usual peak is 1
    CTrack widths;
    Curves sharp;
    std::vector<Call> calls;
    std::vector<double> qualities;
    GoodRegion good;
    Annotation notes;
};

}  // namespace lanecall
