#include "Platform/Linux/Processes/Supervisor/WineSetup.h"

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Processes/Supervisor/StartFailure.h"
#include "Platform/Linux/Wine/Prefixes.h"

#include <fcntl.h>
#include <langinfo.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace Platform {

namespace {

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}

bool LocaleIsUtf8() {
    // A locale that is named but not installed is "C" to every program.
    if (!std::setlocale(LC_CTYPE, "")) return false;
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

}  // namespace

std::string FindWine() {
    std::string_view rest = std::getenv("PATH") ? Variable("PATH") : std::string_view("/usr/local/bin:/usr/bin:/bin");
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
        if (!folder.starts_with('/')) continue;  // A relative one would depend on where the caller happens to be.
        std::string candidate = std::string(folder) + "/wine";
        struct stat found {};
        if (stat(candidate.c_str(), &found) == 0 && S_ISREG(found.st_mode) && access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
    }
    throw StartFailure(ERROR_FILE_NOT_FOUND,
                       "Wine, through which Windows programs run here, was not found on PATH. "
                       "Install it with its 32-bit half (on Debian the packages wine and wine32:i386).");
}

void PrepareEnvironment(const fs::path& prefix, const std::string& engineImage) {
    setenv("WINEPREFIX", prefix.c_str(), 1);
    setenv(engineImageVariable, engineImage.c_str(), 1);
    // Outside a UTF-8 locale Wine can't name files with letters beyond ASCII.
    if (!LocaleIsUtf8()) setenv("LC_ALL", "C.UTF-8", 1);
    setenv("WINEDEBUG", "-all", 0);
    // Without these two libraries Wine, when it makes a prefix or brings one up to a newer version, offers to download
    // Mono and Gecko, and that at any start. They stay away from the engine too: it needs neither, and the variable
    // reaches it as it is here, whatever the process in between does. What the caller says of them counts.
    std::string overrides(Variable("WINEDLLOVERRIDES"));
    for (const std::string library : {"mscoree", "mshtml"}) {
        if (overrides.find(library) != std::string::npos) continue;
        overrides += (overrides.empty() ? "" : ";") + library + "=";
    }
    setenv("WINEDLLOVERRIDES", overrides.c_str(), 1);
}

fs::path ChoosePrefix(const std::string& workingDirectory) {
    if (const auto containing = PrefixContaining(workingDirectory)) return containing->Folder();
    fs::path folder = DefaultPrefix().Folder();
    if (folder.empty()) {
        throw StartFailure(ERROR_PATH_NOT_FOUND, "Wine needs a home folder to keep its files in; HOME is not set.");
    }
    return folder;
}

PrefixSetup::PrefixSetup(ChildProcesses& children, std::string wine, fs::path folder)
    : children_(children), wine_(std::move(wine)), folder_(std::move(folder)) {}

void PrefixSetup::MakeIfMissing() {
    std::error_code error;
    fs::create_directories(folder_, error);
    const FileDescriptor folder(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        const int number = error ? error.value() : errno;
        throw StartFailure(ErrorFromErrno(number), "Wine's folder " + folder_.string() + " can't be made or read: " +
                                                       std::generic_category().message(number) + ".");
    }
    struct stat facts {};
    if (fstat(folder.Get(), &facts) == 0 && facts.st_uid != geteuid()) {
        throw StartFailure(ERROR_ACCESS_DENIED,
                           "Wine's folder " + folder_.string() + " belongs to another user; Wine refuses to use it.");
    }
    // Wine writes its registry some time after a prefix is made. Until then the folder counts as missing and is brought
    // up once more, which takes a fraction of the time.
    const fs::path registry = folder_ / "system.reg";
    if (fs::exists(registry, error)) return;
    while (flock(folder.Get(), LOCK_EX) != 0 && errno == EINTR) {}
    if (!fs::exists(registry, error)) Boot("--init");
}

bool PrefixSetup::Is64Bit() const {
    std::error_code error;
    return fs::is_directory(folder_ / "drive_c/windows/syswow64", error);
}

bool PrefixSetup::AddMissing32BitHalf() {
    std::error_code error;
    const fs::path library = folder_ / "drive_c/windows/syswow64/kernel32.dll";
    if (!Is64Bit() || fs::exists(library, error)) return false;
    // Only while a prefix is being made does Wine load its libraries without finding their names in the prefix.
    setenv("WINEBOOTSTRAPMODE", "1", 1);
    Boot("--update");
    unsetenv("WINEBOOTSTRAPMODE");
    return fs::exists(library, error);
}

void PrefixSetup::Boot(const char* option) {
    // Left to finish even if this process is killed: half a prefix would be in the player's way.
    children_.WaitFor(children_.Start({wine_, "wineboot", option}, -1, -1, OnDeath::Stay));
}

}  // namespace Platform
