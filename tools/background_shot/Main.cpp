#include "tools/background_shot/Options.h"
#include "tools/background_shot/Picture.h"
#include "tools/background_shot/Shot.h"

#include <cstdio>
#include <exception>

int main(int count, char** words) {
    using namespace BackgroundShot;
    try {
        const Options options = ReadOptions({words + 1, words + count});
        const Shot shot = Draw(options);
        WritePng(shot.image, options.out);
        if (!options.raw.empty()) WriteRaw(shot.image, options.raw);
        if (!options.offscreenRaw.empty()) WriteRaw(shot.offscreen, options.offscreenRaw);
        std::printf("{\"width\":%u,\"height\":%u,\"offscreenWidth\":%u,\"offscreenHeight\":%u}\n", shot.image.width,
                    shot.image.height, shot.offscreen.width, shot.offscreen.height);
        return 0;
    } catch (const WrongUsage& error) {
        std::fprintf(stderr, "background_shot: %s\n\n%s", error.what(), kUsage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "background_shot: %s\n", error.what());
        return 1;
    }
}
