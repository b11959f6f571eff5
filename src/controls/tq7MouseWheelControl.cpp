#include "controls/tq7MouseWheelControl.h"

#include "companion/VbText.h"
#include "frame/Error.h"

namespace tq7::tq7MouseWheelControl {

namespace {
// The module's five values, one set for the process.
struct Hook {
  int32_t hwnd = 0;
  Procedure previous;
  GridSurface* surface = nullptr;
  std::shared_ptr<Callback> callback;
  bool set = false;
};
Hook& hook() {
  static Hook h;
  return h;
}
}  // namespace

void WheelHook(GridSurface& surface, std::shared_ptr<Callback> callback, Procedure previous) {
  Hook& h = hook();
  if (h.set) step([] { WheelUnhook(); });
  h.callback = std::move(callback);
  h.surface = &surface;
  step([&] { h.hwnd = surface.hWnd(); });
  h.previous = std::move(previous);
  h.set = true;
}

void WheelUnhook() {
  Hook& h = hook();
  h.previous = {};
  h.surface = nullptr;
  h.set = false;
  // The callback stays until the next hook.
}

bool hooked() { return hook().set; }
GridSurface* hookedSurface() { return hook().set ? hook().surface : nullptr; }
int32_t hookedWindow() { return hook().hwnd; }

int32_t WindowProc(int32_t hwnd, uint32_t uMsg, int32_t wParam, int32_t lParam) {
  Hook& h = hook();
  if (uMsg == WM_MOUSEWHEEL) {
    const int32_t MouseKeys = wParam & 0xFFFF;
    int32_t Rotation = 0, Xpos = 0, Ypos = 0;
    step([&] { Rotation = vb::CLng(double(wParam) / 65536.0); });
    Xpos = lParam & 0xFFFF;
    step([&] { Ypos = vb::CLng(double(lParam) / 65536.0); });
    // A callback that is gone fails here, and the call below fails the same way; neither may
    // break the message loop.
    std::shared_ptr<Callback> cb = h.callback;
    step([&] {
      if (!cb) throw Error{err::ObjectRequired, QStringLiteral("Object required")};
      (void)cb->Name();
    });
    step([&] {
      if (!cb) throw Error{err::ObjectRequired, QStringLiteral("Object required")};
      cb->MouseWheel(MouseKeys, Rotation, Xpos, Ypos);
    });
  }
  int32_t result = 0;
  if (h.previous) {
    const Procedure previous = h.previous;
    step([&] { result = previous(uMsg, wParam, lParam); });
  }
  (void)hwnd;
  return result;
}

int32_t wheelWParam(int32_t rotation, int32_t mouseKeys) {
  return int32_t((uint32_t(uint16_t(int16_t(rotation))) << 16) | uint32_t(uint16_t(mouseKeys)));
}

int32_t wheelLParam(int32_t screenX, int32_t screenY) {
  return int32_t((uint32_t(uint16_t(screenY)) << 16) | uint32_t(uint16_t(screenX)));
}

}  // namespace tq7::tq7MouseWheelControl
