// SPDX-License-Identifier: MIT
// Damaged results whose samples are to be called again.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/RunPlan.h"
#include "platform/Files.h"

namespace lanetools {

// The name under which a result waits for its successor: the program takes an .esd file as the result and would not
// call its sample again, so that file must not have its own name meanwhile. A process that is killed leaves it there.
std::string SetAsidePath(const std::string& path);

// Holds the damaged results of a plan while their samples are called again. A result is removed when another one is
// stored in its place; otherwise it gets its name back.
class CSetAside {
  public:
    // Renames those that the program would not replace. Throws std::runtime_error if one cannot be renamed.
    explicit CSetAside(const CRunPlan& plan);
    ~CSetAside();
    CSetAside(const CSetAside&) = delete;
    CSetAside& operator=(const CSetAside&) = delete;

    // Decides on each of them, once; call it when the program has ended. Throws std::runtime_error if one can be
    // neither removed nor renamed, after all others have been settled.
    void Settle();

  private:
    struct Waiting {
        std::string path, aside;                       // `aside` is empty if it was not renamed
        std::optional<platform::FileIdentity> failed;  // of the .fsd file of the sample, before the call
    };
    void SettleAll();
    // Each returns what went wrong; empty if nothing did.
    static std::string SettleCalled(const Waiting& one);
    static std::string SettleFailed(const Waiting& one);

    std::vector<Waiting> waiting;
    std::string problem;
};

}  // namespace lanetools
