// The program's entry on Windows: the real backend, the application, the message loop.
#include "app/app.h"
#include "platform/win32/win32_backend.h"

#ifdef MIROVANTA_TEST_DRIVER
#include "app/test_driver.h"
#endif

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    win32::Win32Backend backend;
    mv::App app(backend);
    ui::Dispatch(backend, [&] { app.Start(); });
#ifdef MIROVANTA_TEST_DRIVER
    ui::Dispatch(backend, [&] { mv::RunTestDriver(app); });
#endif
    return backend.Run();
}
