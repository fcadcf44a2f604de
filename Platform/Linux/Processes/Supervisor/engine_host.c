/*
 * engine_host.exe: starts the engine inside Wine with a command line that no shell, script or loader has touched, and
 * tells the supervisor outside how it ends.
 *
 * Being a 32-bit program itself it proves, by saying "ready", that this Wine runs 32-bit programs; Wine's own tools
 * report success even where it can't. Standard input carries one request (struct Request below and three texts) and
 * then stays open for as long as the supervisor lives: its end is the order to end the engine. Reports are lines on
 * standard output. There is no C runtime in it: the fewer libraries Wine loads, the sooner the engine starts.
 */
#include <windows.h>

/* Mirrors EngineHost.cpp. Sizes are in bytes, without terminators. */
struct Request {
    DWORD showWindow; /* an SW_ value, or ~0 for none */
    DWORD imageSize;  /* path of the host system, UTF-8 */
    DWORD commandLineSize;
    DWORD folderSize; /* path of the host system, UTF-8 */
};

enum { maximumText = 1024 * 1024 };

typedef WCHAR*(__cdecl* DosFileName)(const char*);

static HANDLE engineJob;

static void Say(const char* word, const DWORD* number) {
    char line[64] = "engine_host ";
    char digits[16];
    DWORD length = 12, count = 0, written;
    while (*word) line[length++] = *word++;
    if (number) {
        DWORD rest = *number;
        do digits[count++] = (char)('0' + rest % 10);
        while ((rest /= 10) != 0);
        line[length++] = ' ';
        while (count) line[length++] = digits[--count];
    }
    line[length++] = '\n';
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line, length, &written, NULL);
}

static void Fail(DWORD error) {
    Say("failed", &error);
    ExitProcess(1);
}

static void ReadAll(void* buffer, DWORD size) {
    char* next = buffer;
    while (size) {
        DWORD read = 0;
        /* Nobody is left to report to. */
        if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), next, size, &read, NULL) || !read) ExitProcess(1);
        next += read;
        size -= read;
    }
}

static void* ReadText(DWORD size) {
    /* Zeroed memory with room for a terminator of either width. */
    char* text = size <= maximumText ? HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size + sizeof(WCHAR)) : NULL;
    if (!text) Fail(ERROR_NOT_ENOUGH_MEMORY);
    ReadAll(text, size);
    return text;
}

static DWORD WINAPI EndWithSupervisor(void* unused) {
    char byte;
    DWORD read;
    (void)unused;
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &read, NULL) && read) {}
    TerminateJobObject(engineJob, 1);
    return 0;
}

/* The engine is ended with this process, but what the engine starts is its own affair, as it is without a job. */
static void MakeJob(void) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits;
    ZeroMemory(&limits, sizeof limits);
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
    engineJob = CreateJobObjectW(NULL, NULL);
    if (!engineJob) Fail(GetLastError());
    if (!SetInformationJobObject(engineJob, JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
        Fail(GetLastError());
    }
}

void HostMain(void) {
    struct Request request;
    STARTUPINFOW startup;
    PROCESS_INFORMATION engine;
    DosFileName toDos;
    char *image, *folder;
    WCHAR *commandLine, *dosImage, *dosFolder;
    DWORD code = 1;

    Say("ready", NULL);
    ReadAll(&request, sizeof request);
    image = ReadText(request.imageSize);
    commandLine = ReadText(request.commandLineSize);
    folder = ReadText(request.folderSize);

    /* Wine's own mapping of its drives, which it offers to programs that know they run under it. */
    toDos = (DosFileName)(void*)GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_dos_file_name");
    if (!toDos) Fail(ERROR_CALL_NOT_IMPLEMENTED);
    dosImage = toDos(image);
    dosFolder = toDos(folder);
    if (!dosImage) Fail(ERROR_PATH_NOT_FOUND);
    if (!dosFolder) Fail(ERROR_DIRECTORY);

    MakeJob();
    ZeroMemory(&startup, sizeof startup);
    startup.cb = sizeof startup;
    /* Null standard handles: this process's own lead to the supervisor and are not for the engine. */
    startup.dwFlags = STARTF_USESTDHANDLES;
    if (request.showWindow != ~0U) {
        startup.dwFlags |= STARTF_USESHOWWINDOW;
        startup.wShowWindow = (WORD)request.showWindow;
    }
    if (!CreateProcessW(dosImage, commandLine, NULL, NULL, FALSE, CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT, NULL,
                        dosFolder, &startup, &engine)) {
        Fail(GetLastError());
    }
    AssignProcessToJobObject(engineJob, engine.hProcess);
    CloseHandle(CreateThread(NULL, 0, EndWithSupervisor, NULL, 0, NULL));
    ResumeThread(engine.hThread);
    Say("started", NULL);

    WaitForSingleObject(engine.hProcess, INFINITE);
    GetExitCodeProcess(engine.hProcess, &code);
    Say("exit", &code);
    ExitProcess(0);
}
