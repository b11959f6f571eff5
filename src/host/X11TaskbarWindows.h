#pragma once
// The task bar on an X11 desktop: the panels are the windows of the dock type, found in the
// window manager's client list or, with no window manager, among the root window's children.
// Hiding unmaps them all and showing maps them again, as far as the window manager lets it.
// Without an X display (Wayland without XWayland, the offscreen platform) nothing is found and
// every call is a no-op, as the control's service expects.
#include "controls/Taskbar.h"

#include <cstdint>
#include <vector>

struct xcb_connection_t;

namespace tq7 {

class X11TaskbarWindows : public TaskbarWindows {
 public:
  // Connects to the display named (empty: $DISPLAY).
  explicit X11TaskbarWindows(const QString& display = {});
  ~X11TaskbarWindows() override;
  X11TaskbarWindows(const X11TaskbarWindows&) = delete;
  X11TaskbarWindows& operator=(const X11TaskbarWindows&) = delete;

  bool connected() const { return c_ != nullptr; }

  // The first panel's window; 0 when there is none. The names are those of the classic task bar
  // and do not narrow the search: every dock counts.
  int64_t FindWindow(const QString& className, const QString& windowName) override;
  // 0 hides every panel, anything else shows them; non-zero when the panel named was visible.
  int32_t ShowWindow(int64_t hwnd, int32_t nCmdShow) override;

 private:
  std::vector<uint32_t> docks();
  uint32_t atom(const char* name);

  xcb_connection_t* c_ = nullptr;
  uint32_t root_ = 0;
  // Panels this object hid: the window manager forgets an unmapped client, this does not.
  std::vector<uint32_t> hidden_;
};

// Installs one X11 service for the process when a display is reachable; answers whether it did.
bool installX11Taskbar();

}  // namespace tq7
