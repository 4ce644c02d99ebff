// SPDX-License-Identifier: MIT
// The program over one plate, started as often as necessary.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/RunPlan.h"
#include "lanetools/system/Child.h"
#include "lanetools/system/Progress.h"

namespace lanetools {

// The program is started once. If a library ends it or makes it hang, the sample that it was working on is lost. Then
// the samples that follow are given to a further start as single files, which are processed like those of a plate, and
// the passes of further libraries over the plate come after that.
//
// Standard output shows which sample it was: each sample of each pass begins with its own line there, and the result of
// its base call is reported before anything else is done with it.
class CPlateRun {
  public:
    // `plan` outlives the run.
    CPlateRun(const CRunPlan& plan, std::size_t plate, CProgress& progress);
    // Ends the program if it runs, and removes its half-written files.
    ~CPlateRun();
    CPlateRun(const CPlateRun&) = delete;
    CPlateRun& operator=(const CPlateRun&) = delete;

    bool IsDone() const { return !child && starts.empty(); }
    // The running program; null between two starts.
    CChild* Child() { return child ? &*child : nullptr; }
    // Starts the program if it does not run and something remains to be done.
    void GoOn();
    // Reads what the running program has written, ends it if it is late, and plans what follows after its end.
    void Look();
    // True if a result may lack something although the sample is stored.
    bool IsIncomplete() const { return isIncomplete; }
    // True if the program has begun at least one sample.
    bool HasWorked() const { return hasWorked; }
    // Why samples have no result, by the path that the result would have, without extension.
    const std::map<std::string, std::string>& Lost() const { return lost; }

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
    bool HasFailed(const CChild& ended) const;
    std::string Accident(const CChild& ended) const;
    void Conclude();
    void CleanUp() const;
    void Lose(std::size_t library, const std::string& file, const std::string& reason);
    void PlanTheRest();
    void Say(const std::string& text);

    const CRunPlan& plan;
    const CPlannedPlate& plate;
    CProgress& progress;
    std::deque<Start> starts;  // the first one is running, or is next
    std::optional<CChild> child;

    // Of the running program: how many samples it has begun, and the state of the last one.
    std::size_t begun = 0;
    bool isCallOver = false;                      // its base call has been reported, or that it is skipped
    bool isLate = false;                          // it has been killed
    std::chrono::steady_clock::time_point since;  // of the last sample's beginning
    std::string output, errors;                   // the part of a line that has been read

    bool isIncomplete = false, hasWorked = false;
    std::map<std::string, std::string> lost;
};

}  // namespace lanetools
