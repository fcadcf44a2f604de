// golden_compare: compares a picture with the one that it should be.
#include "tools/picture/Compare.h"
#include "tools/picture/Picture.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    R"(Compares two PNG pictures.

golden_compare ACTUAL EXPECTED DIFFERENCE [--component N] [--share F]

  --component N  components that differ by N of 255 or less are the same; 2 where it isn't given
  --share F      share of the pixels, 0 to 1, that may differ by more; 0 where it isn't given

Writes DIFFERENCE only if they differ: what was expected in grey, and in red where it isn't so.
Exit code 0 if they are the same, 1 if they differ, 2 if they can't be compared.
)";

}  // namespace

int main(int count, char** words) {
    std::vector<std::string> paths;
    Pictures::Tolerance tolerance;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--component" && i + 1 < count) {
            tolerance.component = std::atoi(words[++i]);
        } else if (word == "--share" && i + 1 < count) {
            tolerance.share = std::atof(words[++i]);
        } else {
            paths.push_back(word);
        }
    }
    if (paths.size() != 3) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    try {
        const Pictures::Picture actual = Pictures::ReadPng(paths[0]);
        const auto result = Pictures::Compare(actual, Pictures::ReadPng(paths[1]), tolerance);
        if (result.same) return 0;
        std::fprintf(stderr, "golden_compare: %s\n  actual:   %s\n  expected: %s\n", result.reason.c_str(),
                     paths[0].c_str(), paths[1].c_str());
        if (result.difference.width != 0) {
            Pictures::WritePng(result.difference, paths[2]);
            std::fprintf(stderr, "  difference: %s\n", paths[2].c_str());
        }
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "golden_compare: %s\n", error.what());
        return 2;
    }
}
