#pragma once
// Gives one control at a time the mouse wheel, which its surface does not report: one hook for
// the whole process. Hooking a surface puts the module's procedure in front of the surface's
// wheel messages; each wheel message calls the callback's MouseWheel with the classic four values
// (the keys down, the rotation in units of 120 a notch with its sign, the pointer's screen X and
// Y) and then goes on to the procedure that was there before. The host feeds the hooked surface's
// wheel events into WindowProc.
#include "frame/GridSurface.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

namespace tq7::tq7MouseWheelControl {

constexpr uint32_t WM_MOUSEWHEEL = 0x20A;
// Keys in MouseKeys.
constexpr int32_t MK_LBUTTON = 0x1, MK_RBUTTON = 0x2, MK_SHIFT = 0x4, MK_CONTROL = 0x8, MK_MBUTTON = 0x10;

// What the hook calls: any control with a Name and a MouseWheel.
class Callback {
 public:
  virtual ~Callback() = default;
  virtual QString Name() const = 0;
  virtual void MouseWheel(int32_t MouseKeys, int32_t Rotation, int32_t Xpos, int32_t Ypos) = 0;
};

// A surface's procedure for its messages; answers the message's result.
using Procedure = std::function<int32_t(uint32_t msg, int32_t wParam, int32_t lParam)>;

// Sets the hook on surface (unhooking the one before); previous is the procedure the surface's
// messages went to so far (none: they end in the hook).
void WheelHook(GridSurface& surface, std::shared_ptr<Callback> callback, Procedure previous = {});
template <class T>
void WheelHook(GridSurface& surface, T& control, Procedure previous = {}) {
  struct Of final : Callback {
    explicit Of(T& c) : c_(c) {}
    QString Name() const override { return c_.Name(); }
    void MouseWheel(int32_t k, int32_t r, int32_t x, int32_t y) override { c_.MouseWheel(k, r, x, y); }
    T& c_;
  };
  WheelHook(surface, std::make_shared<Of>(control), std::move(previous));
}
// Puts the old procedure back and lets the surface go. Only for a set hook.
void WheelUnhook();

bool hooked();
// The surface hooked now, or null.
GridSurface* hookedSurface();
// The window handle the hook was set on.
int32_t hookedWindow();

// The module's procedure for a message of the hooked window.
int32_t WindowProc(int32_t hwnd, uint32_t uMsg, int32_t wParam, int32_t lParam);

// The wheel message's two values from Qt's terms.
int32_t wheelWParam(int32_t rotation, int32_t mouseKeys);
int32_t wheelLParam(int32_t screenX, int32_t screenY);

}  // namespace tq7::tq7MouseWheelControl
