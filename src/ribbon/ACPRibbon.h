#pragma once
// The ribbon bar an application fills at run time: tabs, categories and buttons in three flat lists
// linked by ids, three built-in skins, and a stack of picture and label pieces that the layout moves,
// shows and hides. The host draws the stack and feeds the mouse back; every look (hover, pressed,
// selected) is nothing but which pieces are visible.
//
// ACPRibbon.cpp holds the lists, the skins and the properties; ACPRibbonLayout.cpp the resize and the
// tab, category and button layouts; ACPRibbonMouse.cpp the hover routines and the mouse handlers.
#include "frame/Control.h"
#include "ribbon/ACPRibbonEvents.h"
#include "ribbon/ImageList.h"
#include "ribbon/RibbonPieceStack.h"
#include "ribbon/RibbonSkin.h"

#include <QHash>
#include <QImage>
#include <QSizeF>
#include <QVariant>
#include <array>
#include <memory>

namespace tq7 {

class ACPRibbon : public Control {
 public:
  static constexpr int kTabs = 31;
  static constexpr int kCats = 31;
  static constexpr int kButtons = 91;
  // Mouse buttons as the events number them.
  static constexpr int vbLeftButton = 1, vbRightButton = 2, vbMiddleButton = 4;

  ACPRibbon();

  void setListener(ACPRibbonEvents* l) { listener_ = l; }

  // ---- Filling the lists -------------------------------------------------------------------------
  // Always False. A 32nd tab or category throws tq7::Error 9 to the caller and leaves its count
  // raised. The caption's line breaks (CR LF) become blanks in the caller's own string.
  bool AddTab(const QString& zID, QString& zCaption);
  bool AddTab(const QString& zID, QString&& zCaption) { return AddTab(zID, zCaption); }
  bool AddCat(const QString& zID, const QString& zTab, QString& zCaption, bool zDlgButton);
  bool AddCat(const QString& zID, const QString& zTab, QString&& zCaption, bool zDlgButton) {
    return AddCat(zID, zTab, zCaption, zDlgButton);
  }
  // Always False and never throws: each statement's failure is skipped, so a 92nd button raises the
  // count and stores nothing. The caption keeps its line breaks on the button; without a tool tip
  // the caller's caption loses them and becomes the tool tip. zPicture counts from 1 in ImageList.
  bool AddButton(const QString& zID, const QString& zSubCat, QString& zCaption, int16_t zPicture,
                 bool zMore = false, const QString& zToolTip = QString());
  bool AddButton(const QString& zID, const QString& zSubCat, QString&& zCaption, int16_t zPicture,
                 bool zMore = false, const QString& zToolTip = QString()) {
    return AddButton(zID, zSubCat, zCaption, zPicture, zMore, zToolTip);
  }

  int16_t Mark();
  int16_t ResetToMark();
  int16_t MarkTotalButton = 0;

  // The resize step, then the tab layout, then the category layout.
  void Refresh();
  // The resize step alone.
  void Resize();

  // ---- Properties ---------------------------------------------------------------------------------
  int16_t Theme() const { return theme_; }
  void setTheme(int16_t value);
  QVariant ButtonCenter() const { return QVariant(buttonCenter_); }
  void setButtonCenter(const QVariant& value);
  void setImageList(std::shared_ptr<const ImageList> list) { imageList_ = std::move(list); }
  // Picture 141 of the current skin. Throws RibbonPictureError when it cannot be loaded.
  QImage LoadBackground() const;
  Colour BackColor() const { return backColor_; }
  Colour ForeColor() const { return foreColor_; }
  Colour TabCaptionColor() const { return tabCaptionColor_; }
  Colour TabCaptionColorActive() const { return tabCaptionColorActive_; }
  const QString& CurrentTab() const { return currentTab_; }
  // The control's own font: the font of the button captions laid out from now on.
  const tq7::Font& Font() const { return pieces_.design(Piece::Button_Caption).font; }
  void setFont(const tq7::Font& f);
  // How many times the property store has been told of a change since creation.
  int PropertyChanges() const { return propertyChanges_; }

  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // ---- The lists, read back (empty or False outside them) --------------------------------------
  int16_t TotalTab() const { return totalTab_; }
  int16_t TotalCat() const { return totalCat_; }
  int16_t TotalButton() const { return totalButton_; }
  QString TabID(int i) const { return inRange(i, kTabs) ? tabs_[size_t(i)].id : QString(); }
  QString TabCaption(int i) const { return inRange(i, kTabs) ? tabs_[size_t(i)].caption : QString(); }
  QString CatID(int i) const { return inRange(i, kCats) ? cats_[size_t(i)].id : QString(); }
  QString CatCaption(int i) const { return inRange(i, kCats) ? cats_[size_t(i)].caption : QString(); }
  QString CatTab(int i) const { return inRange(i, kCats) ? cats_[size_t(i)].tab : QString(); }
  bool CatDlg(int i) const { return inRange(i, kCats) && cats_[size_t(i)].dlg; }
  QString ButID(int i) const { return inRange(i, kButtons) ? buttons_[size_t(i)].id : QString(); }
  QString ButCat(int i) const { return inRange(i, kButtons) ? buttons_[size_t(i)].cat : QString(); }
  QString ButCaption(int i) const { return inRange(i, kButtons) ? buttons_[size_t(i)].caption : QString(); }
  QImage ButPicture(int i) const { return inRange(i, kButtons) ? buttons_[size_t(i)].picture : QImage(); }
  QString ButToolTip(int i) const { return inRange(i, kButtons) ? buttons_[size_t(i)].toolTip : QString(); }
  bool ButMore(int i) const { return inRange(i, kButtons) && buttons_[size_t(i)].more; }

  // ---- The piece stack and the mouse ------------------------------------------------------------
  const RibbonPieceStack& pieces() const { return pieces_; }
  // The piece, or nullptr when that element is not loaded.
  const RibbonPiece* piece(Piece a, int i) const { return pieces_.find(a, i); }
  // Mouse input in twips from the bar's top left. A press gives the pressed piece the mouse until
  // the release, as the window system does; moves without a button go to the piece under them.
  void inputMouseMove(double x, double y);
  void inputMouseDown(int button, double x, double y);
  void inputMouseUp(int button, double x, double y);
  // The piece under the mouse now: the pressed one while a button is held.
  PieceRef mouseTarget(double x, double y) const;

 protected:
  void onResize() override;

 private:
  struct TabEntry { QString id, caption; };
  struct CatEntry { QString id, caption, tab; bool dlg = false; };
  struct ButtonEntry { QString id, cat, caption, toolTip; QImage picture; bool more = false; };
  static bool inRange(int i, int n) { return i >= 0 && i < n; }

  void applySkin();
  void designPieces();
  // Sets a label's caption; an auto-size label takes the size of its text at once.
  void setCaption(RibbonPiece& label, const QString& caption);
  void setPicture(RibbonPiece& image, const QImage& picture, const QImage& picture2x = QImage());
  QSizeF measure(const tq7::Font& font, const QString& text);

  // Layout (ACPRibbonLayout.cpp).
  void resizeStep();
  void LayoutTabs();
  void LayoutCategories();
  int32_t LayoutButtons(const QString& categoryID, int32_t leftPos, int categoryIndex);

  // Mouse (ACPRibbonMouse.cpp).
  void TabHover(int index);
  void CatHover(int index);
  void ButtonHover(int index);
  void hideTabHover(int k);
  void hideCatHover(int k);
  void hideButtonHover(int k);
  void pieceMouseMove(PieceRef p);
  void pieceMouseDown(PieceRef p);
  void pieceMouseUp(PieceRef p);
  void pieceClick(PieceRef p);
  void TabMouse_Click(int i);
  bool visible(Piece a, int i) const;
  void show(Piece a, int i, bool v);

  RibbonPieceStack pieces_;
  ACPRibbonEvents* listener_ = nullptr;

  std::array<TabEntry, kTabs> tabs_;
  std::array<CatEntry, kCats> cats_;
  std::array<ButtonEntry, kButtons> buttons_;
  int16_t totalTab_ = 0, totalCat_ = 0, totalButton_ = 0;
  QString currentTab_;

  int16_t theme_ = 0;
  bool buttonCenter_ = false;
  std::shared_ptr<const ImageList> imageList_;
  Colour tabCaptionColor_ = 0, tabCaptionColorActive_ = 0;
  Colour backColor_ = 0, foreColor_ = 0;
  int propertyChanges_ = 0;

  // The press that holds the mouse, and the piece it went to.
  int pressedButtons_ = 0;
  PieceRef pressed_;

  // Text sizes already measured, per font: the layouts measure the same captions over and over.
  struct MeasureCache {
    tq7::Font font;
    const void* platform = nullptr;
    QHash<QString, QSizeF> sizes;
  };
  std::array<MeasureCache, 2> measured_;
  // Local lists of the layouts, kept to spare their allocation at each layout.
  std::vector<int> localCats_, localButtons_;
};

}  // namespace tq7
