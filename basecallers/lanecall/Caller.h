// One conversation about one sample: what was handed over, and what each procedure makes of it.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "lanecall/Annotation.h"
#include "lanecall/ReadBases.h"
#include "lanecall/Separation.h"

namespace lanecall {

constexpr int procedureCount = 6;
static_assert(procedureCount <= 6, "the program runs no more than six procedures");

class CCaller {
  public:
    // --- what is handed over ---
    // Copies the trace. Arrays that are missing or a negative count give an empty trace.
    void TakeTrace(const double* const* arrays, int channels, int scans, const char* baseOrder);
    // The stretch to keep to, in scans, both included; ignored where it leaves fewer than 200 scans of the signal.
    void TakeRange(int first, int last);
    // Rows and columns in the order A, C, T, G.
    void TakeMatrix(const float* const* rows);

    // Runs one procedure, in the order of their numbers; false when it failed, and Problem says why.
    bool Run(int procedure);
    const std::string& Problem() const { return problem; }

    // --- what came of it; empty until the procedure that makes it has run ---
    ScanRange Range() const;
    Curves& Processed();
    const std::vector<Call>& Calls() const { return Result().calls; }
    char LetterOf(int channel) const { return letters[static_cast<std::size_t>(channel)]; }
    const std::vector<double>& Qualities() const { return Result().qualities; }
    GoodRegion Good() const { return Result().good; }
    double Overall() const { return OverallQuality(Qualities(), Good()); }
    // In the order A, C, T, G; none before separation.
    const std::optional<Matrix>& MatrixUsed() const { return matrixUsed; }
    Annotation& Notes() { return notes; }

  private:
    // The read after each procedure, from the trace as it was recorded to the called bases.
    using Read = std::variant<Recorded, Prepared, Separated, Measured, Sharpened, CalledRead>;

    bool Advance();
    Read After(int procedure);
    void NoteSeparation(const Separated& separated);
    const CalledRead& Result() const;

    Letters letters{'A', 'C', 'T', 'G'};
    Matrix given = Identity();  // A, C, T, G
    Read read = Recorded{};
    int done = 0;         // procedures that have run
    bool isOver = false;  // one of them has failed
    std::string problem;
    std::optional<Matrix> matrixUsed;
    Annotation notes;
};

}  // namespace lanecall
