#pragma once
// The weighing scale reader as a QWidget: the core's text box fills the control in its colour,
// font and alignment. What a person types into the box reaches the core's box, as it would.
#include "devices/WeightMachine.h"
#include "host/WidgetMirror.h"

#include <QWidget>
#include <memory>

class QLineEdit;

namespace tq7 {

class WeightMachineWidget : public QWidget {
  Q_OBJECT
 public:
  // Without a port of its own the reader uses the real serial line.
  explicit WeightMachineWidget(QWidget* parent = nullptr, std::unique_ptr<SerialPort> port = nullptr);
  ~WeightMachineWidget() override;

  WeightMachine& machine() { return machine_; }
  QLineEdit* box() const { return box_; }

  // Brings the box in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;

 private:
  WeightMachine machine_;
  WidgetMirror mirror_;
  QLineEdit* box_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
