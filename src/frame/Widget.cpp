#include "frame/Widget.h"

#include "frame/Error.h"

namespace tq7 {

// Writes v into field and tells the owner, only when it really changed.
#define TQ7_SET(field, v) \
  do {                    \
    if (field == (v)) return; \
    field = (v);          \
    changed();            \
  } while (0)

Widget::Widget(QString name) : name_(std::move(name)) {}

void Widget::changed() {
  if (observer_) observer_->widgetChanged(*this);
}

void Widget::SetFocus() {
  if (observer_) observer_->focusRequested(*this);
}

void Widget::setVisible(bool v) { TQ7_SET(visible_, v); }
void Widget::setEnabled(bool v) { TQ7_SET(enabled_, v); }
void Widget::setLeft(double v) { TQ7_SET(left_, v); }
void Widget::setTop(double v) { TQ7_SET(top_, v); }
void Widget::setWidth(double v) { TQ7_SET(width_, v); }
void Widget::setHeight(double v) { TQ7_SET(height_, v); }
void Widget::Move(double left, double top, double width, double height) {
  if (left_ == left && top_ == top && width_ == width && height_ == height) return;
  left_ = left;
  top_ = top;
  width_ = width;
  height_ = height;
  changed();
}
void Widget::setToolTipText(const QString& t) { TQ7_SET(toolTip_, t); }
void Widget::setFont(const tq7::Font& f) { TQ7_SET(font_, f); }
void Widget::setBackColor(Colour c) { TQ7_SET(back_, c); }
void Widget::setForeColor(Colour c) { TQ7_SET(fore_, c); }

void TextBox::setText(const QString& t) { TQ7_SET(text_, t); }
void TextBox::setMaxLength(int n) { TQ7_SET(maxLength_, n); }
void TextBox::setMultiLine(bool v) { TQ7_SET(multiLine_, v); }
void TextBox::setLocked(bool v) { TQ7_SET(locked_, v); }
void TextBox::setSelStart(int v) { TQ7_SET(selStart_, v); }
void TextBox::setSelLength(int v) { TQ7_SET(selLength_, v); }
void TextBox::setAlignment(int16_t a) { TQ7_SET(alignment_, a); }

void ListBox::AddItem(const QString& item) {
  items_.append(item);
  changed();
}
void ListBox::Clear() {
  if (items_.isEmpty() && listIndex_ == -1) return;
  items_.clear();
  listIndex_ = -1;
  changed();
}
QString ListBox::List(int index) const {
  return index >= 0 && index < items_.size() ? items_.at(index) : QString();
}
void ListBox::setListIndex(int i) {
  if (i < -1 || i >= items_.size()) throw Error{err::InvalidProcedureCall, QStringLiteral("Invalid property value")};
  TQ7_SET(listIndex_, i);
}

void Button::setCaption(const QString& c) { TQ7_SET(caption_, c); }
void Button::setPicture(const QString& p) { TQ7_SET(picture_, p); }
void Label::setCaption(const QString& c) { TQ7_SET(caption_, c); }
void Label::setAlignment(int16_t a) { TQ7_SET(alignment_, a); }
void PictureBox::setPicture(const QImage& img) {
  picture_ = img;
  changed();
}
void ProgressBar::setMin(double v) { TQ7_SET(min_, v); }
void ProgressBar::setMax(double v) { TQ7_SET(max_, v); }
void ProgressBar::setValue(double v) {
  if (v < min_ || v > max_) throw Error{err::InvalidProcedureCall, QStringLiteral("Invalid property value")};
  TQ7_SET(value_, v);
}
void ScrollBar::setMin(int32_t v) { TQ7_SET(min_, v); }
void ScrollBar::setMax(int32_t v) { TQ7_SET(max_, v); }
void ScrollBar::setValue(int32_t v) {
  if (value_ == v) return;
  value_ = v;
  changed();
  if (onChange) onChange();
}
void ScrollBar::setSmallChange(int32_t v) { TQ7_SET(small_, v); }
void ScrollBar::setLargeChange(int32_t v) { TQ7_SET(large_, v); }
void Timer::setInterval(int32_t ms) { TQ7_SET(interval_, ms); }
void Menu::setCaption(const QString& c) { TQ7_SET(caption_, c); }
void Menu::setChecked(bool v) { TQ7_SET(checked_, v); }

void ToolBar::AddButton(const QString& key, const QString& caption, const QString& image) {
  buttons_.push_back(ToolButton{key, caption, image, {}, true, true});
  changed();
}
ToolButton& ToolBar::Buttons(const QString& key) {
  for (auto& b : buttons_)
    if (b.Key == key) return b;
  throw Error{err::ElementNotFound, QStringLiteral("Element not found")};
}
void ToolBar::setButtonVisible(const QString& key, bool v) {
  ToolButton& b = Buttons(key);
  if (b.Visible == v) return;
  b.Visible = v;
  changed();
}
void ToolBar::setButtonEnabled(const QString& key, bool v) {
  ToolButton& b = Buttons(key);
  if (b.Enabled == v) return;
  b.Enabled = v;
  changed();
}
void ToolBar::setButtonCaption(const QString& key, const QString& caption) {
  ToolButton& b = Buttons(key);
  if (b.Caption == caption) return;
  b.Caption = caption;
  changed();
}

Form::Form(QString name) : Widget(std::move(name)) { setVisible(false); }
void Form::setCaption(const QString& c) { TQ7_SET(caption_, c); }

#undef TQ7_SET

}  // namespace tq7
