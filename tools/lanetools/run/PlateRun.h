// The program over one plate, started as often as it takes.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/RunPlan.h"
#include "lanetools/system/Child.h"
#include "lanetools/system/Progress.h"

namespace lanetools {

// The program is started once. Where a library ends it, or has it hang, the sample that it was working on is lost; the
// samples that follow are given to a further start as single files, which go the same way as those of a plate, and the
// passes of further libraries over the plate come after that.
//
// Which sample that is, follows from standard output: each sample of each pass begins with a line of its own there, and
// what has become of its base call is reported before anything else is done with it.
class CPlateRun {
  public:
    // `plan` outlives the run.
    CPlateRun(const CRunPlan& plan, std::size_t plate, CProgress& progress);

    bool IsDone() const { return !child && starts.empty(); }
    // The running program; null between two starts.
    CChild* Child() { return child ? &*child : nullptr; }
    // Starts the program when it does not run and there is something left to do.
    void GoOn();
    // Takes in what the running program has written, ends it when it is late, and draws the conclusions from its end.
    void Look();
    // Removes what the killed program has left half-written.
    void CleanUp() const;
    // True when a result may lack something although the sample is stored.
    bool IsIncomplete() const { return isIncomplete; }
    // True when the program has taken up at least one sample.
    bool HasWorked() const { return hasWorked; }

  private:
    // One start of the program.
    struct Start {
        std::vector<std::string> words;
        std::vector<std::size_t> libraries;  // of its passes, in CLibraries::chosen
        std::vector<std::string> files;      // of each pass
        bool isWholePlate;

        std::size_t Samples() const { return libraries.size() * files.size(); }
    };

    Start WholePlate(std::vector<std::size_t> libraries) const;
    void ReadLine(const std::string& line);
    void ShowError(const std::string& line);
    bool HasFailed(const ChildEnd& end) const;
    std::string Accident(const ChildEnd& end) const;
    void Conclude();
    void PlanTheRest();
    void Say(const std::string& text);

    const CRunPlan& plan;
    const CPlannedPlate& plate;
    CProgress& progress;
    std::deque<Start> starts;  // the first one is running, or is next
    std::optional<CChild> child;

    // Of the running program: how many samples it has begun, and the state of the last one.
    std::size_t begun = 0;
    bool isCallOver = false;                      // its base call, or that it is left out, has been reported
    bool hasLeft = false;                         // a library has ended the process in its own way
    bool isLate = false;                          // it has been killed
    std::chrono::steady_clock::time_point since;  // of the last sample's beginning
    std::string output, errors;                   // the beginning of a line

    bool isIncomplete = false, hasWorked = false;
};

}  // namespace lanetools
