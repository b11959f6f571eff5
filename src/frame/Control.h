#pragma once
// What every control shares: its own geometry, its children, focus as core state, the language
// of its texts, persisted properties, and one change callback through which its host learns of
// any change of any child.
#include "frame/PropertyBag.h"
#include "frame/Widget.h"

#include <QString>
#include <functional>
#include <vector>

namespace tq7 {

class Control : public WidgetObserver {
 public:
  explicit Control(QString name);
  ~Control() override;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const QString& Name() const { return name_; }

  // The control's own size, in twips. Changing it runs the resize procedure.
  double Width() const { return width_; }
  double Height() const { return height_; }
  void setSize(double width, double height);
  void setWidth(double w) { setSize(w, height_); }
  void setHeight(double h) { setSize(width_, h); }

  // Children in the order they were added (which is also the order the host stacks them).
  const std::vector<Widget*>& children() const { return children_; }

  // Focus. Giving focus runs the lost and gained handlers at once.
  Widget* focusedChild() const { return focus_; }
  bool hasFocus() const { return hasFocus_; }
  void setFocusTo(Widget* w);
  // The host tells when the control as a whole gains or loses the focus.
  void controlGotFocus();
  void controlLostFocus();

  // Persisted properties: the host or the application asks for a save or a restore.
  virtual void ReadProperties(const PropertyBag& bag) { (void)bag; }
  virtual void WriteProperties(PropertyBag& bag) const { (void)bag; }

  // Told once per change of any child state; the host coalesces it.
  void setChangeCallback(std::function<void()> cb) { changeCallback_ = std::move(cb); }
  void widgetChanged(Widget& w) override;
  void focusRequested(Widget& w) override { setFocusTo(&w); }
  // A change that no child state shows (a property the host reads directly).
  void notifyChanged();

  int16_t LanguageID() const { return languageId_; }

 protected:
  void addChild(Widget& w);
  // The message pair: Thai for LanguageID 0, English for anything else.
  QString msg(const char* thai, const char* english) const;
  void setLanguageID(int16_t id) { languageId_ = id; }

  virtual void onResize() {}
  virtual void onGotFocus() {}
  virtual void onChildGotFocus(Widget& w) { (void)w; }
  virtual void onChildLostFocus(Widget& w) { (void)w; }

  int16_t languageId_ = 0;

 private:
  QString name_;
  double width_ = 0, height_ = 0;
  std::vector<Widget*> children_;
  Widget* focus_ = nullptr;
  bool hasFocus_ = false;
  std::function<void()> changeCallback_;
};

}  // namespace tq7
