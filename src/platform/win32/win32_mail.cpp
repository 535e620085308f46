// The system's mail client through Simple MAPI, loaded from mapi32.dll when first used: a
// machine without a client, or without the library, answers kNoClient.
#include "platform/win32/win32_backend.h"

#include <mapi.h>

#include <vector>

namespace win32 {

namespace {

// The wide forms of the Simple MAPI records (Windows 8 and later, and Wine), which MinGW's
// header leaves out; their layout is that of the narrow ones.
struct MapiRecipW {
    ULONG ulReserved;
    ULONG ulRecipClass;
    PWSTR lpszName;
    PWSTR lpszAddress;
    ULONG ulEIDSize;
    PVOID lpEntryID;
};

struct MapiFileW {
    ULONG ulReserved;
    ULONG flFlags;
    ULONG nPosition;
    PWSTR lpszPathName;
    PWSTR lpszFileName;
    PVOID lpFileType;
};

struct MapiMessageW {
    ULONG ulReserved;
    PWSTR lpszSubject;
    PWSTR lpszNoteText;
    PWSTR lpszMessageType;
    PWSTR lpszDateReceived;
    PWSTR lpszConversationID;
    FLAGS flFlags;
    MapiRecipW* lpOriginator;
    ULONG nRecipCount;
    MapiRecipW* lpRecips;
    ULONG nFileCount;
    MapiFileW* lpFiles;
};

using SendMailW = ULONG(WINAPI*)(LHANDLE, ULONG_PTR, MapiMessageW*, FLAGS, ULONG);
using SendMailA = ULONG(WINAPI*)(LHANDLE, ULONG_PTR, lpMapiMessage, FLAGS, ULONG);

constexpr int kMapiBase = 32000;
constexpr ULONG kPositionNone = 0xFFFFFFFF; // the attachment goes at the end of the note

std::string Narrow(const std::wstring& w) {
    if (w.empty()) return {};
    const int n =
        WideCharToMultiByte(CP_ACP, 0, w.data(), int(w.size()), nullptr, 0, nullptr, nullptr);
    std::string s(size_t(n), '\0');
    WideCharToMultiByte(CP_ACP, 0, w.data(), int(w.size()), s.data(), n, nullptr, nullptr);
    return s;
}

// A path the code page can hold: its short form when the long one has other characters.
std::string NarrowPath(const std::wstring& path) {
    BOOL perdu = FALSE;
    WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, nullptr, 0, nullptr, &perdu);
    return Narrow(perdu ? ShortPathOf(path) : path);
}

class Win32Mailer : public platform::Mailer {
public:
    ~Win32Mailer() override {
        if (session_ != 0 && logoff_) logoff_(session_, 0, 0, 0);
        if (lib_) FreeLibrary(lib_);
    }

    int SignOn(ui::WindowHandle owner) override {
        if (!Load()) return kNoClient;
        if (session_ != 0) return 0;
        LHANDLE session = 0;
        const ULONG r = logon_(ULONG_PTR(owner), nullptr, nullptr, MAPI_LOGON_UI, 0, &session);
        if (r != SUCCESS_SUCCESS) return Number(r);
        session_ = session;
        return 0;
    }

    int Send(ui::WindowHandle owner, const platform::MailMessage& m) override {
        if (!Load()) return kNoClient;
        if (sendW_) {
            std::vector<std::wstring> paths(m.attachments);
            return Number(Envoyer<MapiMessageW, MapiRecipW, MapiFileW>(
                sendW_, ULONG_PTR(owner), L"SMTP:" + m.address, m.subject, m.note, paths,
                !m.address.empty()));
        }
        std::vector<std::string> paths;
        for (const auto& p : m.attachments) paths.push_back(NarrowPath(p));
        return Number(Envoyer<MapiMessage, MapiRecipDesc, MapiFileDesc>(
            sendA_, ULONG_PTR(owner), "SMTP:" + Narrow(m.address), Narrow(m.subject),
            Narrow(m.note), paths, !m.address.empty()));
    }

private:
    // Fills the records of one message, wide or narrow (the records take non-const
    // strings, so they point into these copies), and sends it through the client's dialog.
    template <class Msg, class Recip, class File, class Str, class Fn>
    ULONG Envoyer(Fn envoi, ULONG_PTR owner, Str address, Str subject, Str note,
                  std::vector<Str>& paths, bool withAddress) {
        Recip recip{0, MAPI_TO, address.data() + 5, address.data(), 0, nullptr};
        std::vector<File> files;
        for (auto& p : paths) files.push_back({0, 0, kPositionNone, p.data(), nullptr, nullptr});
        Msg msg{};
        msg.lpszSubject = subject.data();
        msg.lpszNoteText = note.data();
        if (withAddress) {
            msg.nRecipCount = 1;
            msg.lpRecips = &recip;
        }
        msg.nFileCount = ULONG(files.size());
        msg.lpFiles = files.empty() ? nullptr : files.data();
        return envoi(session_, owner, &msg, MAPI_DIALOG | MAPI_LOGON_UI, 0);
    }

    static int Number(ULONG r) {
        if (r == SUCCESS_SUCCESS) return 0;
        if (r == MAPI_E_NOT_SUPPORTED) return kNoClient;
        return kMapiBase + int(r);
    }

    bool Load() {
        if (!tried_) {
            tried_ = true;
            lib_ = LoadLibraryW(L"mapi32.dll");
            if (lib_) {
                logon_ = reinterpret_cast<LPMAPILOGON>(
                    reinterpret_cast<void*>(GetProcAddress(lib_, "MAPILogon")));
                logoff_ = reinterpret_cast<LPMAPILOGOFF>(
                    reinterpret_cast<void*>(GetProcAddress(lib_, "MAPILogoff")));
                sendW_ = reinterpret_cast<SendMailW>(
                    reinterpret_cast<void*>(GetProcAddress(lib_, "MAPISendMailW")));
                sendA_ = reinterpret_cast<SendMailA>(
                    reinterpret_cast<void*>(GetProcAddress(lib_, "MAPISendMail")));
            }
        }
        return logon_ && (sendW_ || sendA_);
    }

    bool tried_ = false;
    HMODULE lib_ = nullptr;
    LPMAPILOGON logon_ = nullptr;
    LPMAPILOGOFF logoff_ = nullptr;
    SendMailW sendW_ = nullptr;
    SendMailA sendA_ = nullptr;
    LHANDLE session_ = 0;
};

} // namespace

std::unique_ptr<platform::Mailer> MakeMailer() {
    return std::make_unique<Win32Mailer>();
}

} // namespace win32
