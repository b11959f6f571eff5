#pragma once
// An invisible control that hides or shows the desktop's task bar. The windows are reached
// through a TaskbarWindows service: the host installs one for the window system in use; with
// none installed nothing is found and nothing happens.
#include <QString>
#include <cstdint>

namespace tq7 {

class TaskbarWindows {
 public:
  virtual ~TaskbarWindows() = default;
  // The task bar's window, found by its class and title; 0 when there is none.
  virtual int64_t FindWindow(const QString& className, const QString& windowName) = 0;
  // nCmdShow 1 shows, 0 hides; the answer is non-zero when the window was visible before.
  virtual int32_t ShowWindow(int64_t hwnd, int32_t nCmdShow) = 0;
};

class Taskbar {
 public:
  // The service in force; nullptr leaves the quiet one that finds nothing.
  static void setWindows(TaskbarWindows* w);
  static TaskbarWindows& windows();

  // Write-only in use. The property is set once more to the system's answer (whether the bar
  // was visible before), and that second setting goes no further: what Show reads is that answer.
  void setShow(bool V);
  bool Show() const { return show_; }

 private:
  bool show_ = false;
};

}  // namespace tq7
