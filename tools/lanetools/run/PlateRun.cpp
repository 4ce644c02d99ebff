// SPDX-License-Identifier: MIT
#include "lanetools/run/PlateRun.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "discovery/SplitPath.h"
#include "lanetools/run/Libraries.h"
#include "lanetools/text/Utf8.h"
#include "platform/AtomicFile.h"
#include "records/Messages.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;

constexpr std::size_t longestLine = 1 << 16;   // of a program that writes no line ends
constexpr std::size_t mostSingleFiles = 1000;  // on one command line
constexpr std::string_view mark("\0", 1);      // no message holds one

std::string Until(const std::string& marked) {
    return marked.substr(0, marked.find(mark));
}

// Calls use(line) for each whole line of `pending` and the new `text`, without its line end, and keeps the rest in
// `pending`.
template <class Use>
void SplitLines(std::string& pending, const std::string& text, Use use) {
    pending += text;
    std::size_t start = 0, end = 0;
    while ((end = pending.find('\n', start)) != std::string::npos) {
        const bool hasReturn = end > start && pending[end - 1] == '\r';
        use(pending.substr(start, end - start - (hasReturn ? 1 : 0)));
        start = end + 1;
    }
    pending.erase(0, start);
    if (pending.size() > longestLine) use(std::exchange(pending, {}));
}

void RemoveTemporaries(const fs::path& folder, const std::string& beginning) {
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        std::error_code ignored;
        if (name.starts_with(beginning) && name.ends_with(".tmp")) fs::remove(at->path(), ignored);
    }
}

}  // namespace

CPlateRun::CPlateRun(const CRunPlan& all, std::size_t index, CProgress& shown)
    : plan(all), plate(all.plates[index]), progress(shown) {
    std::vector<std::size_t> libraries(plan.libraries.chosen.size());
    for (std::size_t i = 0; i < libraries.size(); ++i)
        libraries[i] = i;
    starts.push_back({FirstCommand(plan, plate), std::move(libraries), plate.files, true});
}

// All samples again from the first one on, for libraries whose pass has not begun.
CPlateRun::Start CPlateRun::WholePlate(std::vector<std::size_t> libraries) const {
    const std::vector<std::string> names = plan.libraries.Names(libraries);
    return {FurtherCommand(plan, plate, {}, names), std::move(libraries), plate.files, true};
}

void CPlateRun::GoOn() {
    if (child || starts.empty()) return;
    begun = 0;
    isCallOver = isLate = false;
    output.clear();
    errors.clear();
    since = steady_clock::now();
    child.emplace(CChild::Program(starts.front().words, "LANEWRIGHT_END_DESCRIPTOR"));
}

void CPlateRun::Look() {
    if (!child) return;
    const bool hasEnded = child->IsEnded();
    SplitLines(output, child->TakeOutput(), [&](const std::string& line) { ReadLine(line); });
    SplitLines(errors, child->TakeErrors(), [&](const std::string& line) { Say(line); });
    if (hasEnded) return Conclude();
    const std::chrono::seconds limit(plan.options.timeout);
    if (limit.count() == 0 || isLate || steady_clock::now() - since < limit) return;
    isLate = true;
    child->Kill();
}

void CPlateRun::ReadLine(const std::string& line) {
    const Start& start = starts.front();
    if (begun < start.Samples()) {
        const std::string& next = start.files[begun % start.files.size()];
        // A text without a line end may precede it.
        if (line.find(Until(FormatMessage(MessageId::Loading, {next, plate.name, mark}))) != std::string::npos) {
            ++begun;
            isCallOver = false;
            hasWorked = true;
            since = steady_clock::now();
            progress.Step();
            return;
        }
    }
    if (begun == 0) return;
    const std::string& file = start.files[(begun - 1) % start.files.size()];
    const auto isAbout = [&](MessageId id, const std::string& first) {
        return line.starts_with(Until(FormatMessage(id, {first + std::string(mark)})));
    };
    isCallOver = isCallOver || isAbout(MessageId::BaseCallSucceeded, file + ' ') ||
                 isAbout(MessageId::BaseCallFailed, file + ' ') || isAbout(MessageId::Skipped, "");
}

void CPlateRun::Say(const std::string& text) {
    progress.Say(OneLine(ToUtf8(plate.name + ": " + text)));
}

// Only the program itself can report its end: a library may end the process with any exit code. The exit code of single
// files is that of the last one.
bool CPlateRun::HasFailed(const CChild& ended) const {
    const Start& start = starts.front();
    return !ended.HasReportedEnd() || (ended.End().exitCode != 0 && (start.isWholePlate || begun < start.Samples()));
}

std::string CPlateRun::Accident(const CChild& ended) const {
    if (isLate) return "no progress for " + std::to_string(plan.options.timeout) + " s";
    if (ended.End().signal != 0) return SignalName(ended.End().signal);
    if (begun > 0 && !ended.HasReportedEnd()) return "the library ended the process";
    return "exit code " + std::to_string(ended.End().exitCode);
}

void CPlateRun::Conclude() {
    if (!errors.empty()) Say(std::exchange(errors, {}));
    const bool hasFailed = HasFailed(*child);
    const std::string accident = hasFailed ? Accident(*child) : "";
    if (hasFailed) CleanUp();
    child.reset();
    if (!hasFailed) {
        starts.pop_front();
        return;
    }
    if (begun == 0) {
        Say("the program ended before the first sample (" + accident + ")");
        starts.clear();
        return;
    }
    const Start& start = starts.front();
    const std::string& file = start.files[(begun - 1) % start.files.size()];
    const std::size_t library = start.libraries[(begun - 1) / start.files.size()];
    if (isCallOver) {
        Say(file + ": the program ended after its base call (" + accident + "); exported files may be missing");
        isIncomplete = true;
    } else {
        Lose(library, file, "lost to the library " + plan.libraries.File(library) + " (" + accident + ")");
    }
    PlanTheRest();
}

void CPlateRun::Lose(std::size_t library, const std::string& file, const std::string& reason) {
    Say(file + ": " + reason);
    for (const CPlannedOutput& one : plan.outputs)
        if (&plan.plates[one.plate] == &plate && one.library == library)
            lost.emplace(one.path + '/' + WithoutExtension(file), reason);
}

void CPlateRun::PlanTheRest() {
    const Start start = std::move(starts.front());
    starts.pop_front();
    const std::size_t pass = (begun - 1) / start.files.size(), next = (begun - 1) % start.files.size() + 1;
    if (pass + 1 < start.libraries.size())
        starts.push_front(
            WholePlate({start.libraries.begin() + static_cast<std::ptrdiff_t>(pass) + 1, start.libraries.end()}));
    // The last ones first, since each is put before the others.
    const std::vector<std::string> rest(start.files.begin() + static_cast<std::ptrdiff_t>(next), start.files.end());
    const std::vector<std::size_t> library{start.libraries[pass]};
    std::size_t parts = (rest.size() + mostSingleFiles - 1) / mostSingleFiles;
    while (parts-- > 0) {
        const auto first = rest.begin() + static_cast<std::ptrdiff_t>(parts * mostSingleFiles);
        const std::vector<std::string> files(first,
                                             first + std::min<std::ptrdiff_t>(mostSingleFiles, rest.end() - first));
        starts.push_front({FurtherCommand(plan, plate, files, plan.libraries.Names(library)), library, files, false});
    }
}

CPlateRun::~CPlateRun() {
    if (!child) return;
    child->KillAndWait();
    try {
        CleanUp();
    } catch (const std::exception&) {
        // The next run of the program removes them.
    }
}

// Removes the half-written files of the program that was killed.
void CPlateRun::CleanUp() const {
    const std::string beginning = platform::TemporaryBeginning(child->Number());
    std::vector<fs::path> folders{plate.path, plan.output};
    for (const CPlannedOutput& one : plan.outputs)
        if (&plan.plates[one.plate] == &plate) folders.emplace_back(one.path);
    for (const fs::path& folder : folders) {
        RemoveTemporaries(folder, beginning);
        for (const char* format : {"ABD", "SCF", "FASTA", "Text"})
            RemoveTemporaries(folder / format, beginning);
    }
}

}  // namespace lanetools
