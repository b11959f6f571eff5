#pragma once
// The bar that shows a view's current page and its total of pages: first and back buttons, the
// two page boxes, next and last buttons. It holds no page logic: the button events are declared
// for the application and nothing raises them, as the two tool bars have no click handlers.
#include "frame/Control.h"

#include <cstdint>

namespace tq7 {

class PageCollectionEvents {
 public:
  virtual ~PageCollectionEvents() = default;
  virtual void ButtonNextClick() {}
  virtual void ButtonBackClick() {}
  virtual void ButtonFirstClick() {}
  virtual void ButtonLastClick() {}
  virtual void ChangeCurrent() {}
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
};

class PageCollection : public Control {
 public:
  static constexpr double FixedHeight = 300;
  static constexpr double MinWidth = 3330;
  // Each tool bar holds two buttons of 16 by 16 images.
  static constexpr double ToolBarWidth = 690;

  PageCollection();
  ~PageCollection() override;

  void setListener(PageCollectionEvents* l) { listener_ = l; }

  // A key on the control, passed on.
  void UserControl_KeyDown(int16_t& KeyCode, int16_t& Shift);

  ToolBar tbrLeft{QStringLiteral("tbrLeft")};
  TextBox txtCurrent{QStringLiteral("txtCurrent")};
  TextBox txtTotal{QStringLiteral("txtTotal")};
  ToolBar TbrRight{QStringLiteral("TbrRight")};

 protected:
  void onResize() override;

 private:
  PageCollectionEvents* listener_ = nullptr;
};

}  // namespace tq7
