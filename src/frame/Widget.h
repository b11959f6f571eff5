#pragma once
// Child widget states. Setting a property changes state and tells the owner; nothing paints here.
// The host mirrors these states onto real widgets and feeds user input back through the setters.
#include "frame/Types.h"

#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

namespace tq7 {

class Widget;

// Told of every change of a child's state; the owning control relays it to its host.
class WidgetObserver {
 public:
  virtual ~WidgetObserver() = default;
  virtual void widgetChanged(Widget& w) = 0;
  // The widget asks for the input focus (SetFocus); the owner decides and runs its handlers.
  virtual void focusRequested(Widget& w) { (void)w; }
};

class Widget {
 public:
  explicit Widget(QString name);
  virtual ~Widget() = default;
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;

  const QString& Name() const { return name_; }

  bool Visible() const { return visible_; }
  void setVisible(bool v);
  bool Enabled() const { return enabled_; }
  void setEnabled(bool v);

  // Geometry in twips, relative to the owning control.
  double Left() const { return left_; }
  double Top() const { return top_; }
  double Width() const { return width_; }
  double Height() const { return height_; }
  void setLeft(double v);
  void setTop(double v);
  void setWidth(double v);
  void setHeight(double v);
  void Move(double left, double top, double width, double height);

  const QString& ToolTipText() const { return toolTip_; }
  void setToolTipText(const QString& t);
  const tq7::Font& Font() const { return font_; }
  void setFont(const tq7::Font& f);
  Colour BackColor() const { return back_; }
  void setBackColor(Colour c);
  Colour ForeColor() const { return fore_; }
  void setForeColor(Colour c);

  void setObserver(WidgetObserver* o) { observer_ = o; }
  // Asks the owning control for the input focus.
  void SetFocus();

 protected:
  void changed();

 private:
  QString name_;
  bool visible_ = true;
  bool enabled_ = true;
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  QString toolTip_;
  tq7::Font font_;
  Colour back_ = syscolor::Window;
  Colour fore_ = syscolor::WindowText;
  WidgetObserver* observer_ = nullptr;
};

class TextBox : public Widget {
 public:
  using Widget::Widget;
  const QString& Text() const { return text_; }
  void setText(const QString& t);
  int MaxLength() const { return maxLength_; }  // 0: no limit
  void setMaxLength(int n);
  bool MultiLine() const { return multiLine_; }
  void setMultiLine(bool v);
  bool Locked() const { return locked_; }
  void setLocked(bool v);
  int SelStart() const { return selStart_; }
  void setSelStart(int v);
  int SelLength() const { return selLength_; }
  void setSelLength(int v);
  int16_t Alignment() const { return alignment_; }  // 0 left, 1 right, 2 centre
  void setAlignment(int16_t a);

 private:
  QString text_;
  int maxLength_ = 0;
  bool multiLine_ = false;
  bool locked_ = false;
  int selStart_ = 0, selLength_ = 0;
  int16_t alignment_ = 0;
};

class ListBox : public Widget {
 public:
  using Widget::Widget;
  void AddItem(const QString& item);
  void Clear();
  int ListCount() const { return int(items_.size()); }
  QString List(int index) const;  // empty outside the list
  const QStringList& Items() const { return items_; }
  int ListIndex() const { return listIndex_; }  // -1: nothing chosen
  void setListIndex(int i);

 private:
  QStringList items_;
  int listIndex_ = -1;
};

class Button : public Widget {
 public:
  using Widget::Widget;
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  const QString& Picture() const { return picture_; }  // image key
  void setPicture(const QString& p);
  std::function<void()> onClick;  // the owner's handler; the host calls Click()
  void Click() { if (onClick) onClick(); }

 private:
  QString caption_;
  QString picture_;
};

class Label : public Widget {
 public:
  using Widget::Widget;
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  int16_t Alignment() const { return alignment_; }
  void setAlignment(int16_t a);

 private:
  QString caption_;
  int16_t alignment_ = 0;
};

class PictureBox : public Widget {
 public:
  using Widget::Widget;
  const QImage& Picture() const { return picture_; }
  void setPicture(const QImage& img);

 private:
  QImage picture_;
};

class ProgressBar : public Widget {
 public:
  using Widget::Widget;
  double Min() const { return min_; }
  double Max() const { return max_; }
  double Value() const { return value_; }
  void setMin(double v);
  void setMax(double v);
  void setValue(double v);

 private:
  double min_ = 0, max_ = 100, value_ = 0;
};

class ScrollBar : public Widget {
 public:
  using Widget::Widget;
  int32_t Min() const { return min_; }
  int32_t Max() const { return max_; }
  int32_t Value() const { return value_; }
  int32_t SmallChange() const { return small_; }
  int32_t LargeChange() const { return large_; }
  void setMin(int32_t v);
  void setMax(int32_t v);
  void setValue(int32_t v);  // the owner's onChange runs when the value moves
  void setSmallChange(int32_t v);
  void setLargeChange(int32_t v);
  std::function<void()> onChange;

 private:
  int32_t min_ = 0, max_ = 32767, value_ = 0, small_ = 1, large_ = 1;
};

// A timer state: the host drives it with a real timer, tests call Tick().
class Timer : public Widget {
 public:
  using Widget::Widget;
  int32_t Interval() const { return interval_; }  // milliseconds; 0 never ticks
  void setInterval(int32_t ms);
  std::function<void()> onTick;
  void Tick() { if (onTick) onTick(); }

 private:
  int32_t interval_ = 0;
};

class Menu : public Widget {
 public:
  using Widget::Widget;
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  bool Checked() const { return checked_; }
  void setChecked(bool v);
  std::function<void()> onClick;
  void Click() { if (onClick) onClick(); }

 private:
  QString caption_;
  bool checked_ = false;
};

// One button of a tool bar, found by its key.
struct ToolButton {
  QString Key;
  QString Caption;
  QString Image;
  QString ToolTipText;
  bool Visible = true;
  bool Enabled = true;
};

class ToolBar : public Widget {
 public:
  using Widget::Widget;
  void AddButton(const QString& key, const QString& caption, const QString& image);
  // A key the bar lacks is a failure of the calling step, as in the classic collection.
  ToolButton& Buttons(const QString& key);
  const std::vector<ToolButton>& ButtonList() const { return buttons_; }
  void setButtonVisible(const QString& key, bool v);
  void setButtonEnabled(const QString& key, bool v);
  void setButtonCaption(const QString& key, const QString& caption);
  std::function<void(const QString& key)> onButtonClick;
  void ButtonClick(const QString& key) { if (onButtonClick) onButtonClick(key); }

 private:
  std::vector<ToolButton> buttons_;
};

// A modal form or dialog held by the core; the platform's showModal runs it until Hide().
class Form : public Widget {
 public:
  explicit Form(QString name);
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  void Show() { setVisible(true); }
  void Hide() { setVisible(false); }
  void addChild(Widget& w) { children_.push_back(&w); }
  const std::vector<Widget*>& Children() const { return children_; }

 private:
  QString caption_;
  std::vector<Widget*> children_;
};

}  // namespace tq7
