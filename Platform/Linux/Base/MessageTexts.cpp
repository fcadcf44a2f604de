// The texts of the system codes and HRESULTs that this project meets.

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct Message {
    DWORD code;
    std::string_view text;
};

constexpr Message messages[] = {
    {0, "The operation completed successfully."},
    {2, "The system cannot find the file specified."},
    {3, "The system cannot find the path specified."},
    {4, "The system cannot open the file."},
    {5, "Access is denied."},
    {6, "The handle is invalid."},
    {8, "Not enough memory resources are available to process this command."},
    {14, "Not enough memory resources are available to complete this operation."},
    {18, "There are no more files."},
    {19, "The media is write protected."},
    {31, "A device attached to the system is not functioning."},
    {32, "The process cannot access the file because it is being used by another process."},
    {53, "The network path was not found."},
    {80, "The file exists."},
    {87, "The parameter is incorrect."},
    {112, "There is not enough space on the disk."},
    {122, "The data area passed to a system call is too small."},
    {123, "The filename, directory name, or volume label syntax is incorrect."},
    {161, "The specified path is invalid."},
    {170, "The requested resource is in use."},
    {183, "Cannot create a file when that file already exists."},
    {193, "%1 is not a valid Win32 application."},
    {203, "The system could not find the environment option that was entered."},
    {206, "The filename or extension is too long."},
    {234, "More data is available."},
    {267, "The directory name is invalid."},
    {1117, "The request could not be performed because of an I/O device error."},
    {1223, "The operation was canceled by the user."},
    {1400, "Invalid window handle."},
    {1407, "Cannot find window class."},
    {1410, "Class already exists."},
    {1411, "Class does not exist."},
    {1444, "Invalid thread identifier."},
    {1921, "The name of the file cannot be resolved by the system."},
    {0x80004001, "Not implemented"},
    {0x80004002, "No such interface supported"},
    {0x80004003, "Invalid pointer"},
    {0x80004004, "Operation aborted"},
    {0x80004005, "Unspecified error"},
    {0x8000FFFF, "Catastrophic failure"},
    {0x80010106, "Cannot change thread mode after it is set."},
    {0x80040154, "Class not registered"},
    {0x800401F0, "CoInitialize has not been called."},
    {0x887A0001,
     "The application made a call that is invalid. Either the parameters of the call or the state of some "
     "object was incorrect."},
    {0x887A0002, "The object was not found."},
    {0x887A0004, "The specified device interface or feature level is not supported on this system."},
    {0x887A0005, "The GPU device instance has been suspended."},
    {0x887A0006,
     "The GPU will not respond to more commands, most likely because of an invalid command passed by the "
     "calling application."},
    {0x887A0007,
     "The GPU will not respond to more commands, most likely because some other application submitted "
     "invalid commands."},
    {0x887A000A,
     "The GPU was busy at the moment when the call was made, and the call was neither executed nor "
     "scheduled."},
    {0x88980800, "Composition of this window is already in use."},
    {0x88985000, "Indicates an error in an input file such as a font file."},
    {0x88990001, "The object was not in the correct state to process the method."},
    {0x8899000C,
     "There has been a presentation error that may be recoverable. The caller needs to recreate, rerender "
     "the entire frame, and reattempt present."},
    {0x88990012, "Objects used together must be created from the same factory instance."},
    {0x88990014, "The pop call did not match the corresponding push call."},
    {0x88990016, "The push and pop calls were unbalanced."},
};

std::string_view TextOf(DWORD code) {
    // An HRESULT of the Win32 facility has the text of the code that it carries.
    if ((code & 0xFFFF0000U) == 0x80070000U) code &= 0xFFFFU;
    const auto* const found = std::ranges::find(messages, code, &Message::code);
    return found == std::end(messages) ? std::string_view() : found->text;
}

}  // namespace

DWORD FormatMessageA(DWORD flags, LPCVOID, DWORD code, DWORD, LPSTR buffer, DWORD size, std::va_list*) noexcept {
    static constexpr std::string_view lineBreak = "\r\n";
    if (flags != (FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS) || !buffer) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::string_view text = TextOf(code);
    if (text.empty()) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return 0;
    }
    const std::size_t length = text.size() + lineBreak.size();
    if (length >= size) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    char* end = std::ranges::copy(text, buffer).out;
    end = std::ranges::copy(lineBreak, end).out;
    *end = '\0';
    return static_cast<DWORD>(length);
}
