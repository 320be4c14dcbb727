#pragma once

#include <windows.h>

#include <functional>

namespace solvane {

/// A window of the host's, without a place on the screen. It paints where a test posts WM_PAINT to it.
class SimulatorWindow {
public:
    static constexpr UINT inputMessage = WM_KEYDOWN;

    SimulatorWindow()
        : window_(
              CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&receive));
    }
    ~SimulatorWindow() { DestroyWindow(window_); }
    SimulatorWindow(const SimulatorWindow&) = delete;
    SimulatorWindow& operator=(const SimulatorWindow&) = delete;

    void post(UINT message) { PostMessageW(window_, message, 0, 0); }

    std::function<void()> onPaint;
    int inputs = 0;

private:
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM w, LPARAM l) {
        auto& self = *reinterpret_cast<SimulatorWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_PAINT && self.onPaint)
            self.onPaint();
        if (message == inputMessage)
            ++self.inputs;
        return message == WM_PAINT ? 0 : DefWindowProcW(window, message, w, l);
    }

    HWND window_;
};

} // namespace solvane
