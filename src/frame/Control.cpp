#include "frame/Control.h"

namespace tq7 {

Control::Control(QString name) : name_(std::move(name)) {}

// The children are members of the derived control and are gone by now: nothing to tell them.
Control::~Control() = default;

void Control::addChild(Widget& w) {
  children_.push_back(&w);
  w.setObserver(this);
}

void Control::setSize(double width, double height) {
  width_ = width;
  height_ = height;
  onResize();
  notifyChanged();
}

void Control::setFocusTo(Widget* w) {
  if (focus_ == w) return;
  Widget* old = focus_;
  focus_ = w;
  if (old) onChildLostFocus(*old);
  if (w) onChildGotFocus(*w);
  notifyChanged();
}

void Control::controlGotFocus() {
  hasFocus_ = true;
  onGotFocus();
}

void Control::controlLostFocus() { hasFocus_ = false; }

void Control::widgetChanged(Widget&) { notifyChanged(); }

void Control::notifyChanged() {
  if (changeCallback_) changeCallback_();
}

QString Control::msg(const char* thai, const char* english) const {
  return QString::fromUtf8(languageId_ != 0 ? english : thai);
}

}  // namespace tq7
