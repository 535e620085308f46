// Programs started with CreateProcess, whose handles are kept so that ending one can never
// reach another process that got its id later; the running list from a Toolhelp snapshot.
#include "platform/win32/win32_backend.h"

#include <tlhelp32.h>

#include <map>
#include <vector>

namespace win32 {

namespace {

class Win32Processes : public platform::Processes {
public:
    ~Win32Processes() override {
        for (const auto& [id, h] : started_) CloseHandle(h);
    }

    uint32_t Start(const std::wstring& commandLine, int showStyle) override {
        Forget();
        STARTUPINFOW si{};
        si.cb = sizeof si;
        si.dwFlags = STARTF_USESHOWWINDOW;
        si.wShowWindow = WORD(showStyle);
        PROCESS_INFORMATION pi{};
        // CreateProcessW may write into its command line.
        std::vector<wchar_t> ligne(commandLine.begin(), commandLine.end());
        ligne.push_back(L'\0');
        if (!CreateProcessW(nullptr, ligne.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &si, &pi))
            return 0;
        CloseHandle(pi.hThread);
        started_[pi.dwProcessId] = pi.hProcess;
        return pi.dwProcessId;
    }

    std::vector<std::wstring> RunningNames() override {
        std::vector<std::wstring> noms;
        HANDLE snap = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
        if (snap == INVALID_HANDLE_VALUE) return noms;
        PROCESSENTRY32W e{};
        e.dwSize = sizeof e;
        for (BOOL ok = Process32FirstW(snap, &e); ok; ok = Process32NextW(snap, &e))
            noms.emplace_back(e.szExeFile);
        CloseHandle(snap);
        return noms;
    }

    void End(uint32_t id) override {
        const auto it = started_.find(id);
        if (it == started_.end()) return;
        if (WaitForSingleObject(it->second, 0) == WAIT_TIMEOUT) {
            TerminateProcess(it->second, 0);
            WaitForSingleObject(it->second, 1000);
        }
        CloseHandle(it->second);
        started_.erase(it);
    }

    std::wstring SystemFolder() override {
        wchar_t buf[MAX_PATH] = {};
        const UINT n = GetSystemDirectoryW(buf, MAX_PATH);
        return n > 0 && n < MAX_PATH ? std::wstring(buf, n) : std::wstring();
    }

private:
    // Handles of processes that have ended are of no more use.
    void Forget() {
        for (auto it = started_.begin(); it != started_.end();) {
            if (WaitForSingleObject(it->second, 0) != WAIT_TIMEOUT) {
                CloseHandle(it->second);
                it = started_.erase(it);
            } else {
                ++it;
            }
        }
    }

    std::map<DWORD, HANDLE> started_;
};

} // namespace

std::unique_ptr<platform::Processes> MakeProcesses() {
    return std::make_unique<Win32Processes>();
}

} // namespace win32
