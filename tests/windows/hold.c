/* Holds a file as another program on Windows would, until its standard input ends.
 *
 * hold.exe MODE FILE   with MODE alone (nobody else may open it), reader (others may read and write, and not replace it)
 *                      or lock (like SQLite while it writes)
 */
#include <stdio.h>
#include <string.h>
#include <windows.h>

int wmain(int count, wchar_t** values) {
    OVERLAPPED place;
    HANDLE file;
    DWORD share;
    if (count != 3) {
        return 2;
    }
    share = wcscmp(values[1], L"alone") == 0 ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE;
    file = CreateFileW(values[2], GENERIC_READ | GENERIC_WRITE, share, NULL, OPEN_EXISTING, 0, NULL);
    if (file == INVALID_HANDLE_VALUE) {
        fprintf(stderr, "hold: error %lu\n", GetLastError());
        return 1;
    }
    memset(&place, 0, sizeof place);
    place.Offset = 0x40000000; /* SQLite's pending byte; the reserved and the shared ones follow */
    if (wcscmp(values[1], L"lock") == 0 &&
        !LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 512, 0, &place)) {
        fprintf(stderr, "hold: lock %lu\n", GetLastError());
        return 1;
    }
    puts("held");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    CloseHandle(file);
    return 0;
}
