// SPDX-License-Identifier: MIT
// A folder of its own for a test, gone with the object.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace testsupport {

class TempFolder {
  public:
    TempFolder() : folder((std::filesystem::temp_directory_path() / "lanewrightXXXXXX").string()) {
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder");
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // Full path of `name` in the folder; of the folder itself when empty.
    std::string Path(std::string_view name = {}) const {
        return name.empty() ? folder : folder + "/" + std::string(name);
    }

    // Makes the file, and the folders on the way, and gives its full path.
    std::string Write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path path = Path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream out(path, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
        return path.string();
    }

    // Makes a folder, and those on the way, and gives its full path.
    std::string MakeFolder(std::string_view name) const {
        std::filesystem::create_directories(Path(name));
        return Path(name);
    }

    bool Has(std::string_view name) const { return std::filesystem::exists(Path(name)); }

    // All bytes of the file; throws when there is none.
    std::string Read(std::string_view name) const {
        std::ifstream in(Path(name), std::ios::binary);
        if (!in) throw std::runtime_error("cannot read " + Path(name));
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

  private:
    std::string folder;
};

}  // namespace testsupport
