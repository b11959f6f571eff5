#include "controls/PageCollection.h"

#include <cmath>

namespace tq7 {

PageCollection::PageCollection() : Control(QStringLiteral("PageCollection")) {
  for (Widget* w : std::initializer_list<Widget*>{&tbrLeft, &txtCurrent, &txtTotal, &TbrRight}) addChild(*w);
  tbrLeft.AddButton(QStringLiteral("First"), QString(), QStringLiteral("first"));
  tbrLeft.AddButton(QStringLiteral("Back"), QString(), QStringLiteral("back"));
  TbrRight.AddButton(QStringLiteral("Next"), QString(), QStringLiteral("next"));
  TbrRight.AddButton(QStringLiteral("Last"), QString(), QStringLiteral("last"));
  txtCurrent.setToolTipText(QStringLiteral("หน้าปัจจุบัน"));
  txtTotal.setToolTipText(QStringLiteral("จำนวนหน้าทั้งหมด"));
  for (ToolBar* t : {&tbrLeft, &TbrRight}) {
    t->setWidth(ToolBarWidth);
    t->setHeight(FixedHeight);
  }
  for (TextBox* t : {&txtCurrent, &txtTotal}) {
    t->setHeight(FixedHeight);
    t->setAlignment(2);
  }
  setSize(MinWidth, FixedHeight);
}

PageCollection::~PageCollection() = default;

void PageCollection::onResize() {
  // The height is fixed and the width has a floor; the size set here lays the pieces out again.
  if (Height() != FixedHeight || Width() < MinWidth) {
    setSize(Width() < MinWidth ? MinWidth : Width(), FixedHeight);
    return;
  }
  tbrLeft.setTop(0);
  TbrRight.setTop(0);
  txtCurrent.setTop(0);
  txtTotal.setTop(0);
  tbrLeft.setLeft(0);
  txtCurrent.setLeft(tbrLeft.Left() + tbrLeft.Width());
  TbrRight.setLeft(Width() - TbrRight.Width());
  txtCurrent.setWidth(std::trunc((Width() - tbrLeft.Width() - TbrRight.Width()) / 2));
  txtTotal.setLeft(txtCurrent.Left() + txtCurrent.Width());
  txtTotal.setWidth(txtCurrent.Width());
}

void PageCollection::UserControl_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (listener_) listener_->KeyDown(KeyCode, Shift);
}

}  // namespace tq7
