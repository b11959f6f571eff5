#pragma once
// Mirrors core child states onto real Qt widgets, and what a person does to those widgets back
// onto the states. Every control's host builds its children with these and calls sync() once per
// turn of the event loop after the core has changed.
#include "frame/Widget.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QToolBar;

namespace tq7 {

// One sync per turn of the event loop, however many core changes ask for it; changes made while
// the sync runs ask for none.
class CoalescedSync {
 public:
  CoalescedSync(QObject* context, std::function<void()> sync) : context_(context), sync_(std::move(sync)) {}
  void request();
  // Brackets one sync: it answers a pending request, and requests inside it are dropped.
  class Run {
   public:
    explicit Run(CoalescedSync& s) : s_(s) {
      s_.pending_ = false;
      s_.running_ = true;
    }
    ~Run() { s_.running_ = false; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    CoalescedSync& s_;
  };

 private:
  QObject* context_;
  std::function<void()> sync_;
  bool pending_ = false;
  bool running_ = false;
};

int twipsToPixels(double twips);
double pixelsToTwips(int pixels);

class WidgetMirror {
 public:
  // The widgets are created as children of parent.
  explicit WidgetMirror(QWidget* parent) : parent_(parent) {}

  // A message box: centred text on the window colour.
  QLabel* messageBox(TextBox& state);
  // An in-cell editor: typing reaches the state's text; MaxLength applies.
  QLineEdit* lineEdit(TextBox& state);
  QListWidget* list(ListBox& state);
  QPushButton* button(Button& state);
  // A tool bar whose buttons click through ToolBar::ButtonClick(key).
  QToolBar* toolBar(ToolBar& state);
  // Any other state: geometry, visibility, enabled, tool tip only.
  void plain(Widget& state, QWidget* widget);

  // Brings every mirrored widget in line with its state.
  void sync();

 private:
  struct Entry {
    Widget* state;
    QPointer<QWidget> widget;
    std::function<void()> syncSpecific;
  };
  void add(Widget& state, QWidget* widget, std::function<void()> specific);

  QWidget* parent_;
  std::vector<Entry> entries_;
};

}  // namespace tq7
