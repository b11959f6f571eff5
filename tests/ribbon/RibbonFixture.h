#pragma once
// A small bar for the ribbon's tests: two tabs, three categories (one on another tab, one on a tab
// that does not exist) and two buttons, measured by the fake platform (a character of the tab and
// category font is 117 twips wide and 234 high; of the button font 99 wide, 198 high a line).
#include "ribbon/ACPRibbon.h"

#include "frame/FakePlatform.h"

#include <QStringList>
#include <memory>

namespace tq7::testing {

struct EventLog : ACPRibbonEvents {
  QStringList events;
  std::function<void()> onTabClick;
  void TabClick(const QString& ID, const QString& Caption) override {
    events << QStringLiteral("TabClick %1|%2").arg(ID, Caption);
    if (onTabClick) onTabClick();
  }
  void CatClick(const QString& ID, const QString& Caption) override {
    events << QStringLiteral("CatClick %1|%2").arg(ID, Caption);
  }
  void ButtonClick(const QString& ID, const QString& Caption) override {
    events << QStringLiteral("ButtonClick %1|%2").arg(ID, Caption);
  }
};

inline QImage icon(int w, int h) {
  QImage img(w, h, QImage::Format_ARGB32);
  img.fill(Qt::darkGreen);
  return img;
}

// Fills the bar in the order an application does: theme, image list, tabs, categories, buttons.
inline void fillSmallBar(ACPRibbon& r) {
  auto list = std::make_shared<ImageList>();
  list->ListImages().Add(icon(32, 32));
  r.setImageList(list);
  r.AddTab(QStringLiteral("T1"), QStringLiteral("Sales"));
  r.AddTab(QStringLiteral("T2"), QStringLiteral("Stock"));
  r.AddCat(QStringLiteral("C1"), QStringLiteral("T1"), QStringLiteral("Docs"), true);
  r.AddCat(QStringLiteral("C3"), QStringLiteral("T2"), QStringLiteral("Count"), false);
  r.AddCat(QStringLiteral("C2"), QStringLiteral("T1"), QStringLiteral("Long category caption"), false);
  r.AddCat(QStringLiteral("C4"), QStringLiteral("T9"), QStringLiteral("Nowhere"), false);
  r.AddButton(QStringLiteral("B1"), QStringLiteral("C1"), QStringLiteral("New"), 1);
  r.AddButton(QStringLiteral("B2"), QStringLiteral("C1"), QStringLiteral("Print\r\nAll"), 1, true, QStringLiteral("Print"));
  r.AddButton(QStringLiteral("B3"), QStringLiteral("C3"), QStringLiteral("Count"), 1);
  r.AddButton(QStringLiteral("B4"), QStringLiteral("C9"), QStringLiteral("Lost"), 1);
}

inline bool shown(const ACPRibbon& r, Piece a, int i) {
  const RibbonPiece* p = r.piece(a, i);
  return p && p->Visible;
}

}  // namespace tq7::testing
