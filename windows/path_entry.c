/* Puts a folder on the user's search path for programs, or takes it off.
 *
 * path_entry.exe add|remove FOLDER
 *
 * A program of its own, since the installer's language cuts texts off at 1024 characters and a path may be longer. The
 * kind of the value and all other entries stay as they are. Programs that are started later see the change.
 */
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include <windows.h>

static const wchar_t kKey[] = L"Environment";
static const wchar_t kName[] = L"Path";

/* The length of the entry that begins there, up to the next semicolon. */
static size_t entryLength(const wchar_t* entry) {
    const wchar_t* end = wcschr(entry, L';');
    return end == NULL ? wcslen(entry) : (size_t)(end - entry);
}

static int isFolder(const wchar_t* entry, size_t length, const wchar_t* folder) {
    if (length > 0 && entry[length - 1] == L'\\') {
        --length;
    }
    return length == wcslen(folder) && _wcsnicmp(entry, folder, length) == 0;
}

/* The path without the folder. */
static void copyOthers(wchar_t* to, const wchar_t* path, const wchar_t* folder) {
    const wchar_t* entry = path;
    *to = L'\0';
    while (*entry != L'\0') {
        const size_t length = entryLength(entry);
        if (length > 0 && !isFolder(entry, length, folder)) {
            if (*to != L'\0') {
                wcscat(to, L";");
            }
            wcsncat(to, entry, length);
        }
        entry += length + (entry[length] == L';' ? 1 : 0);
    }
}

int wmain(int count, wchar_t** values) {
    HKEY key;
    DWORD kind = REG_EXPAND_SZ;
    DWORD bytes = 0;
    wchar_t* before;
    wchar_t* after;
    LSTATUS failed;
    int adds;
    if (count != 3 || (wcscmp(values[1], L"add") != 0 && wcscmp(values[1], L"remove") != 0)) {
        return 2;
    }
    adds = wcscmp(values[1], L"add") == 0;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_READ | KEY_WRITE, &key) != ERROR_SUCCESS) {
        return 1;
    }
    failed = RegQueryValueExW(key, kName, NULL, &kind, NULL, &bytes);
    if (failed == ERROR_FILE_NOT_FOUND) {
        kind = REG_EXPAND_SZ;
        bytes = 0;
    } else if (failed != ERROR_SUCCESS || (kind != REG_SZ && kind != REG_EXPAND_SZ)) {
        RegCloseKey(key);
        return 1; /* what is not understood is let alone */
    }
    /* Zeros behind what is read, since a value of the registry need not end in one. */
    before = calloc(bytes + 2 * sizeof(wchar_t), 1);
    after = calloc(bytes + (wcslen(values[2]) + 4) * sizeof(wchar_t), 1);
    if (before == NULL || after == NULL ||
        (bytes > 0 && RegQueryValueExW(key, kName, NULL, &kind, (BYTE*)before, &bytes) != ERROR_SUCCESS)) {
        RegCloseKey(key);
        return 1;
    }
    copyOthers(after, before, values[2]);
    if (adds) {
        if (*after != L'\0') {
            wcscat(after, L";");
        }
        wcscat(after, values[2]);
    }
    failed = *after == L'\0' ? RegDeleteValueW(key, kName)
                             : RegSetValueExW(key, kName, 0, kind, (const BYTE*)after,
                                              (DWORD)((wcslen(after) + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, (LPARAM)kKey, SMTO_ABORTIFHUNG, 2000, NULL);
    free(before);
    free(after);
    return failed == ERROR_SUCCESS || (failed == ERROR_FILE_NOT_FOUND && !adds) ? 0 : 1;
}
