#include "tools/launch_console/Usage.h"

#define CONSOLE_USAGE                                                                         \
    "usage: launch_console validate DIR\n"                                                    \
    "       launch_console find [--preferred DIR]\n"                                          \
    "       launch_console candidates\n"                                                      \
    "       launch_console browse [--folder DIR]\n"                                           \
    "       launch_console values FILE KEY\n"                                                 \
    "       launch_console pe FILE\n"                                                         \
    "       launch_console pak FILE\n"                                                        \
    "       launch_console runtime-path DIR\n"                                                \
    "       launch_console install SOURCE TARGET\n"                                           \
    "       launch_console running IMAGEPATH\n"                                               \
    "       launch_console start DIR [--driver KVR|KVR2] [--mode N] [--windowed] [--smoke]\n" \
    "                                [--detach]\n"                                            \
    "       launch_console settings [--folder S] [--driver KVR|KVR2] [--mode N]\n"            \
    "                               [--windowed|--fullscreen]\n"                              \
    "       launch_console --help\n"

namespace LaunchConsole {

const char* UsageText() {
    return CONSOLE_USAGE;
}

const char* HelpText() {
    return CONSOLE_USAGE R"(
What the launcher does, without its window. Drivers and Engine are taken from beside this program.

validate      judges one folder
find          searches for an installation; --preferred is judged first
candidates    lists the folders that a search judges, in order
browse        opens the folder chooser, at --folder if it is given, and judges what is picked
values        lists the values of a key in one of Steam's text files; KEY holds no quote and no backslash
pe, pak       judge one file: a 32-bit Windows program or library, a pak archive
runtime-path  names an installation: its lock file is this path with ".lock" appended
install       makes the driver TARGET equal to SOURCE, keeping a backup of a file that it replaces
running       whether a quake2.exe runs from exactly this path
start         starts the game and waits for its end, unless --detach is given. Without options: KVR2, mode 4, full
              screen. --smoke is an unattended check run, hidden
settings      changes what is given, saves, and shows the launcher's settings; with no option it only shows them

Output is one JSON object a line, each written out at once. It is UTF-8: where a path or a file holds anything else, the
output has the replacement character U+FFFD in its place. Options stand anywhere; a word -- ends them, so that names can
begin with a dash. Explanations go to standard error.

Exit status: 0 for a positive result (a valid folder or file, a running game, a game that started, work that is done),
1 for a negative one, 2 for wrong usage. How a started game ends doesn't change the status: it is in the output.
)";
}

}  // namespace LaunchConsole
