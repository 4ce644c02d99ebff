// The working folder moved for a test, and back with the object.
#pragma once

#include <filesystem>
#include <string>

namespace testsupport {

class WorkingFolder {
  public:
    explicit WorkingFolder(const std::string& folder) : before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~WorkingFolder() {
        std::error_code ignored;
        std::filesystem::current_path(before, ignored);
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

  private:
    std::filesystem::path before;
};

}  // namespace testsupport
