#include "controls/Taskbar.h"

namespace tq7 {

namespace {
class NoTaskbar final : public TaskbarWindows {
 public:
  int64_t FindWindow(const QString&, const QString&) override { return 0; }
  int32_t ShowWindow(int64_t, int32_t) override { return 0; }
};
NoTaskbar quietWindows;
TaskbarWindows* current = nullptr;
}  // namespace

void Taskbar::setWindows(TaskbarWindows* w) { current = w; }
TaskbarWindows& Taskbar::windows() { return current ? *current : quietWindows; }

void Taskbar::setShow(bool V) {
  TaskbarWindows& w = windows();
  const int64_t hwnd = w.FindWindow(QStringLiteral("Shell_traywnd"), QString());
  const int32_t answer = w.ShowWindow(hwnd, V ? 1 : 0);
  // The property takes the system's answer. Setting it again would run these steps once more,
  // and again, without end: that second round is where this stops.
  show_ = answer != 0;
}

}  // namespace tq7
