/* Starts a 32-bit program, waits for it and ends with its exit status: launch.exe PROGRAM [ARGUMENT ...]
 *
 * This Wine starts only 64-bit programs by itself. For others it calls its own start.exe, which takes longer than
 * most tests, fails at times on a busy machine, and when it is killed leaves its program running. Here the program,
 * and whatever it starts, belongs to a job that ends with this one. */
#include <windows.h>

#include <stdio.h>

static wchar_t* behind_first_argument(wchar_t* line)
{
    int quoted = 0;
    for (; *line && (quoted || (*line != L' ' && *line != L'\t')); ++line)
        if (*line == L'"') quoted = !quoted;
    while (*line == L' ' || *line == L'\t')
        ++line;
    return line;
}

static int give_up(const char* what)
{
    fprintf(stderr, "launch: %s failed with error %lu\n", what, GetLastError());
    return 127;
}

int main(void)
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {0};
    STARTUPINFOW startup = {0};
    PROCESS_INFORMATION process;
    DWORD status = 127;
    int tries;
    HANDLE job = CreateJobObjectW(NULL, NULL);

    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!job || !SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits) ||
        !AssignProcessToJobObject(job, GetCurrentProcess()))
        return give_up("making a job");

    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    /* On a busy machine Wine's server may fail to make the process, with an internal error; later it does. */
    for (tries = 1; !CreateProcessW(NULL, behind_first_argument(GetCommandLineW()), NULL, NULL, TRUE, 0, NULL, NULL,
                                    &startup, &process);
         ++tries) {
        if (GetLastError() != ERROR_INTERNAL_ERROR || tries == 5) return give_up("starting the program");
        Sleep(100);
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    ExitProcess(status);
}
