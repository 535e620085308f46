// Wave audio through MCI's "waveaudio" device, by command strings on one alias.
#include "platform/win32/win32_backend.h"

#include <mmsystem.h>

namespace win32 {

namespace {

constexpr const wchar_t* kAlias = L"mirovanta_wave";

class Win32WaveAudio : public platform::WaveAudio {
public:
    ~Win32WaveAudio() override { Close(); }

    bool Open(const std::wstring& path) override {
        Close();
        const std::wstring cmd = L"open \"" + path + L"\" type waveaudio alias " + kAlias;
        open_ = mciSendStringW(cmd.c_str(), nullptr, 0, nullptr) == 0;
        return open_;
    }

    bool Play() override {
        if (!open_) return false;
        // No "wait": the call returns while the device plays.
        const std::wstring cmd = std::wstring(L"play ") + kAlias + L" from 0";
        return mciSendStringW(cmd.c_str(), nullptr, 0, nullptr) == 0;
    }

    void Close() override {
        if (!open_) return;
        open_ = false;
        const std::wstring cmd = std::wstring(L"close ") + kAlias;
        mciSendStringW(cmd.c_str(), nullptr, 0, nullptr);
    }

private:
    bool open_ = false;
};

} // namespace

std::unique_ptr<platform::WaveAudio> MakeWaveAudio() {
    return std::make_unique<Win32WaveAudio>();
}

} // namespace win32
