// SPDX-License-Identifier: MIT
// Calls the bases of one sample: takes the input, runs the procedures one by one and keeps the results.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "lanecall/Align.h"
#include "lanecall/Annotation.h"
#include "lanecall/CallBases.h"
#include "lanecall/Curves.h"
#include "lanecall/Measure.h"
#include "lanecall/Prepare.h"
#include "lanecall/Quality.h"
#include "lanecall/ReadBases.h"
#include "lanecall/SeparateDyes.h"
#include "lanecall/Separation.h"

namespace lanecall {

constexpr int procedureCount = 6;
static_assert(procedureCount <= 6, "the program runs no more than six procedures");

class CCaller {
  public:
    // --- Input; all of it is copied ---
    // `arrays` points to `channels` arrays (the first four are used) of `scans` values in counts; `baseOrder` has the
    // letters of channels 1 to 4. A missing array or a count below 1 gives an empty trace, missing letters are A, C, T
    // and G.
    void TakeTrace(const double* const* arrays, int channels, int scans, const char* baseOrder);
    // Limits the read to scans `first` to `last`, both included. Ignored if it leaves fewer than 200 scans of signal.
    void TakeRange(int first, int last);
    // From now on the measurements of Notes() are made; they take a twentieth of the time of a read.
    void TurnAnnotationOn() { isAnnotated = true; }
    // The separation matrix: 4 rows of 4, rows and columns in the order A, C, T, G. A missing row gives the identity.
    void TakeMatrix(const float* const* rows);

    // Runs one procedure (0 to procedureCount - 1, in this order). False if it failed; Problem() then has the reason as
    // a sentence for the user. Once a stage has failed, so does every later call.
    bool Run(int procedure);
    const std::string& Problem() const { return problem; }

    // --- Results; empty until the procedure that computes them has run ---
    ScanRange Range() const;  // of the read, in scans of the trace
    Curves& Processed();      // of the whole trace; what lies outside Range() means nothing
    const std::vector<Call>& Calls() const { return Result().calls; }
    char LetterOf(int channel) const { return letters[static_cast<std::size_t>(channel)]; }
    // Heights of the four dyes' peaks at each call, see FitPeaks.
    const std::vector<PerChannel>& Heights() const { return Result().heights; }
    const std::vector<double>& Qualities() const { return Result().qualities; }  // probability that a call is right
    GoodRegion Good() const { return Result().good; }
    double Overall() const { return OverallQuality(Qualities(), Good()); }
    // Rows and columns in the order A, C, T, G; none before the separation or for other letters.
    const std::optional<Matrix>& MatrixUsed() const { return matrixUsed; }
    Annotation& Notes() { return notes; }  // empty unless the annotation was turned on

  private:
    // The read after each procedure, from the trace as it was recorded to the called bases.
    using Read = std::variant<Recorded, Prepared, Separated, Measured, Sharpened, CalledRead>;

    bool Advance();
    Read ResultOf(int procedure);
    CalledRead ReadTheBases();
    std::optional<CalledRead> ReadTallestPart(int length, double minTrust);
    void NoteSeparation(const Separated& separated);
    const CalledRead& Result() const;

    Letters letters{'A', 'C', 'T', 'G'};
    Matrix given = Identity();  // rows and columns in the order A, C, T, G
    Read read = Recorded{};
    Recorded original;  // what procedure 0 began with, for a second try
    SignalPart part = SignalPart::whole;
    int done = 0;         // procedures that have run
    bool isOver = false;  // one of them has failed
    bool isAnnotated = false;
    std::string problem;
    std::optional<Matrix> matrixUsed;
    Annotation notes;
};

}  // namespace lanecall
