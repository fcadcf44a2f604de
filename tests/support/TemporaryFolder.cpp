#include "tests/support/TemporaryFolder.h"

#include <random>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    const fs::path parent = fs::canonical(fs::temp_directory_path());
    for (int attempt = 0; attempt < 100; ++attempt) {
        path_ = parent / ("velorinth-test-" + std::to_string(random()) + std::to_string(random()));
        if (fs::create_directory(path_)) return;
    }
    throw std::runtime_error("no temporary folder can be made");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}
