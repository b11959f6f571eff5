// GridEditor: construction, persisted properties, layout, focus, mode and tool bar, please-wait.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/Platform.h"

#include <cmath>

namespace tq7 {

namespace {
constexpr double kMinHeight = 330;
constexpr double kMinOptionWidth = 300;
constexpr double kNumberMargin = 150;  // the row header's padding and grid line, in twips
constexpr double kToolBarHeight = 390;
constexpr double kLegendWidth = 1215;
}  // namespace

const QStringList& GridEditor::ToolBarImages() {
  static const QStringList images{
      QStringLiteral("Help"),   QStringLiteral("Favorite"), QStringLiteral("UnPass"), QStringLiteral("Pass"),
      QStringLiteral("Select"), QStringLiteral("Search"),   QStringLiteral("Edit"),   QStringLiteral("New"),
      QStringLiteral("Delete"), QStringLiteral("Update"),   QStringLiteral("Print"),  QStringLiteral("Back"),
      QStringLiteral("Cancel"), QStringLiteral("Copy"),     QStringLiteral("Insert"), QStringLiteral("Remove"),
      QStringLiteral("Lock"),   QStringLiteral("MoveUp"),   QStringLiteral("MoveDown")};
  return images;
}

GridEditor::GridEditor(QString name) : Control(std::move(name)) {
  for (Widget* w : std::initializer_list<Widget*>{&mfgData, &TbrButton, &cmdLegend, &cmdOption, &cmdSelect, &List1,
                                                  &List2, &Text, &Text1})
    addChild(*w);
  mfgData.setListener(this);
  Text.setVisible(false);
  List1.setVisible(false);
  cmdSelect.setVisible(false);
  cmdLegend.setVisible(false);  // until a legend is set
  Text1.setMultiLine(true);
  Text1.setLocked(true);
  Text1.setAlignment(2);
  TbrButton.setHeight(kToolBarHeight);
  cmdLegend.setWidth(kLegendWidth);
  cmdLegend.onClick = [this] { cmdLegend_Click(); };
  setUpToolBar();
  setUpPickers();  // the drop-downs of date and period cells, hidden, heard by the grid

  // The colour table, starting from the surface's own colours.
  const Colour back = mfgData.BackColor();
  const Colour fore = mfgData.ForeColor();
  colours_[0] = {back, fore};
  colours_[1] = {0xC0FFFF, fore};
  colours_[2] = {0xFEFFE8, fore};
  disableEditHighlight_ = 0;
  tipWidth_ = 5000;
  tipHeight_ = 5000;
  helpTip_ = QString::fromUtf8("กดปุ่ม F1 เพื่อดูวิธีใช้ทั้งหมด");
  setLanguageID(0);
  showFreeze_ = true;
  setEnableNumber(true);
  RecordCount = 0;
  // Record rows are as tall as the surface's header row.
  defaultRowHeight_ = mfgData.RowHeight(0);
  Matrix1.setListener(this);
  highestColumn_ = 0;
  primaryKeyColumn_ = 0;
  List2.setVisible(false);
  // Only Add on the tool bar; in edit mode a double click acts as F2.
  showAdd_ = true;
  doubleClickNoAction_ = true;
  showInsert_ = showRemove_ = showClear_ = showMoveUp_ = showMoveDown_ = false;
  doubleClickEventKeyCode_ = 113;
  setUpSurface();
  mfgData.setToolTipText(helpTip_);
  alive_ = true;
  setSize(4800, 3600);
}

GridEditor::~GridEditor() {
  alive_ = false;
  Matrix1.setListener(nullptr);
  mfgData.setListener(nullptr);
}

void GridEditor::setUpSurface() {
  SpreadSurface& s = mfgData;
  step([&] {
    s.setRow(-1);
    s.setCol(-1);
    s.setTypeVAlign(2);
  });
  step([&] { s.setCellType(celltype::StaticText); });
  step([&] { s.setMaxRows(0); });
  step([&] { s.setLock(true); });
  // The header area: 16 row-header columns and 36 column-header rows, only the caption row shown.
  step([&] {
    for (int32_t r = GridSurface::SpreadHeader + 1; r <= GridSurface::LastHeaderRow; ++r)
      if (r != attr::Caption) s.setRowHeight(r, 0);
    s.setRowHeight(0, 0);
    for (int32_t c = GridSurface::SpreadHeader + 1; c <= GridSurface::LastHeaderCol; ++c) s.setColWidth(c, 0);
  });
}

void GridEditor::setUpToolBar() {
  struct B {
    const char* key;
    const char* caption;
    const char* image;
  };
  static const B buttons[] = {
      {"Enter", "Enter-OK      ", "Select"},       {"Help", "F1-Help        ", "Help"},
      {"SelectList", "F2-List          ", "Search"}, {"NewList", "F3-Append    ", "Insert"},
      {"InsertList", "Sh+F3-Insert", "Insert"},      {"AddList", "Ctrl+F3-Add ", "Insert"},
      {"DeleteList", "F5-Remove   ", "Remove"},      {"Freeze", "F8-Freeze     ", "Lock"},
      {"MoveUp", "F11-Up         ", "MoveUp"},       {"MoveFirst", "Sh+F11-First\t", "MoveUp"},
      {"MoveDown", "F12-Down     ", "MoveDown"},     {"MoveLast", "Sh+F12-Last", "MoveDown"},
      {"Custom1", "F6-Custom1 ", "Favorite"},        {"Custom2", "F7-Custom2 ", "Favorite"},
      {"Custom3", "F8-Custom3 ", "Favorite"},        {"Custom4", "F9-Custom4 ", "Favorite"},
      {"Custom5", "F10-Custom5", "Favorite"},
  };
  for (const B& b : buttons) {
    TbrButton.AddButton(QString::fromUtf8(b.key), QString::fromUtf8(b.caption), QString::fromUtf8(b.image));
    TbrButton.setButtonVisible(QString::fromUtf8(b.key), false);
  }
  TbrButton.onButtonClick = [this](const QString& key) { onToolBarClick(key); };
}

void GridEditor::onToolBarClick(const QString& key) {
  if (key == QLatin1String("NewList"))
    cmdAddNewNoCheck();  // the button ignores StopActionAdd, unlike F3
  else if (key == QLatin1String("InsertList"))
    cmdInsert_Click();
  else if (key == QLatin1String("AddList"))
    cmdInsertAfter_Click();
  else if (key == QLatin1String("DeleteList"))
    cmdDelete_Click();
  else if (key == QLatin1String("Freeze"))
    cmdFreeze_Click();
  else if (key == QLatin1String("MoveUp"))
    cmdMoveUp_Click();
  else if (key == QLatin1String("MoveFirst"))
    cmdMoveFirst_Click();
  else if (key == QLatin1String("MoveDown"))
    cmdMoveDown_Click();
  else if (key == QLatin1String("MoveLast"))
    cmdMoveLast_Click();
  else if (key == QLatin1String("Enter")) {
    int16_t code = tq7::key::Return, none = 0;  // the button is the Enter key
    KeyDown(code, none);
  }
}

// ---- Persisted properties -------------------------------------------------------------------------

void GridEditor::ReadProperties(const PropertyBag& bag) {
  step([&] { editStatus_ = bag.ReadProperty(QStringLiteral("EditStatus"), false).toBool(); });
  step([&] { showAdd_ = bag.ReadProperty(QStringLiteral("EditStatusShowAddButton"), true).toBool(); });
  step([&] { showRemove_ = bag.ReadProperty(QStringLiteral("EditStatusShowRemoveButton"), true).toBool(); });
  step([&] { Text1.setText(bag.ReadProperty(QStringLiteral("Note"), QString()).toString()); });
}

void GridEditor::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("Note"), Text1.Text());
  bag.WriteProperty(QStringLiteral("EditStatus"), editStatus_);
  bag.WriteProperty(QStringLiteral("EditStatusShowAddButton"), showAdd_);
  bag.WriteProperty(QStringLiteral("EditStatusShowRemoveButton"), showRemove_);
}

// ---- Layout and focus ------------------------------------------------------------------------------

void GridEditor::onResize() { resize(); }

void GridEditor::ReSizeNow() { resize(); }

void GridEditor::resize() {
  if (Height() < kMinHeight) {
    setHeight(kMinHeight);  // runs this procedure again at the new height
    return;
  }
  step([&] {
    if (!showAdd_ && !showInsert_ && !showRemove_ && !showClear_ && !showEnterButton_) {
      TbrButton.setVisible(false);
      mfgData.setHeight(Height());
    } else {
      TbrButton.setVisible(true);
      mfgData.setHeight(std::abs(Height() - TbrButton.Height()));
    }
  });
  step([&] {
    mfgData.setWidth(Width());
    Text1.Move(0, 0, mfgData.Width(), mfgData.Height());
    cmdOption.setLeft(0);
    cmdOption.setTop(0);
  });
  step([&] {
    cmdOption.setWidth(std::max(std::abs(mfgData.ColWidth(0)), kMinOptionWidth));
    cmdOption.setHeight(std::abs(mfgData.RowHeight(attr::Caption)));
  });
  step([&] {
    cmdLegend.setLeft(mfgData.Left() + mfgData.Width() - cmdLegend.Width());
    cmdLegend.setTop(mfgData.Top() + mfgData.Height());
    cmdLegend.setHeight(TbrButton.Height());
  });
  // The tool bar stands below the surface, across the control.
  step([&] { TbrButton.Move(0, mfgData.Top() + mfgData.Height(), Width(), TbrButton.Height()); });
}

void GridEditor::onGotFocus() {
  if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
  step([&] { cmdOption.setWidth(std::max(std::abs(mfgData.ColWidth(0)), kMinOptionWidth)); });
}

void GridEditor::onChildGotFocus(Widget& w) {
  if (&w == &Text) Text_GotFocus();
  if (&w != &mfgData) return;
  Text.setVisible(false);
  List1.setVisible(false);
  List2.setVisible(false);
}

int16_t GridEditor::SetParentForm(void* PassForm, bool ActionSingleControl) {
  parentForm_ = PassForm;
  if (ActionSingleControl) onChildGotFocus(mfgData);
  return 0;
}

void GridEditor::iSendKeys(const QString& iString, bool Wait) { platform().sendKeys(iString, Wait); }

// ---- Please-wait screen ----------------------------------------------------------------------------

void GridEditor::SpeedProcess(bool Status) { SpeedProcess2(Status, QString()); }

int16_t GridEditor::SpeedProcess2(bool Status, const QString& NewCaption) {
  if (Status) {
    step([&] { Text1.setText(NewCaption.isEmpty() ? QStringLiteral("Processing Please wait...") : NewCaption); });
    step([&] { mfgData.setVisible(false); });
    step([&] { cmdOption.setVisible(false); });
    step([&] { Text1.setVisible(true); });
  } else {
    step([&] { mfgData.setVisible(true); });
    step([&] { cmdOption.setVisible(true); });
    step([&] { Text1.setVisible(false); });
  }
  platform().processEvents();
  return 0;
}

// ---- Mode and tool bar ------------------------------------------------------------------------------

void GridEditor::setbuttons() {
  RUNMODE = editStatus_ ? QStringLiteral("EDIT") : QStringLiteral("VIEW");
  auto lockAllColumns = [this] {
    const int32_t keepRow = mfgData.Row(), keepCol = mfgData.Col();
    for (int32_t c = 1; c <= mfgData.MaxCols(); ++c) {
      mfgData.setCol(c);
      mfgData.setRow(-1);
      mfgData.setLock(true);
    }
    mfgData.setRow(keepRow);
    mfgData.setCol(keepCol);
  };
  for (const ToolButton& b : TbrButton.ButtonList()) step([&] { TbrButton.setButtonVisible(b.Key, false); });
  step(lockAllColumns);
  if (RUNMODE == QLatin1String("EDIT")) {
    step([&] { TbrButton.setButtonVisible(QStringLiteral("NewList"), showAdd_); });
    step([&] { TbrButton.setButtonVisible(QStringLiteral("InsertList"), showInsert_); });
    step([&] { TbrButton.setButtonVisible(QStringLiteral("ClearList"), showClear_); });  // the bar has none
    step([&] { TbrButton.setButtonVisible(QStringLiteral("DeleteList"), showRemove_); });
    step([&] { TbrButton.setButtonVisible(QStringLiteral("MoveUp"), showMoveUp_); });
    step([&] { TbrButton.setButtonVisible(QStringLiteral("MoveDown"), showMoveDown_); });
    if (showFreeze_) step([&] { TbrButton.setButtonVisible(QStringLiteral("Freeze"), true); });
    step(lockAllColumns);
  } else {
    step([&] { TbrButton.setButtonVisible(QStringLiteral("Enter"), showEnterButton_); });
  }
  TbrButton.setVisible(showAdd_ || showInsert_ || showRemove_ || showClear_ || showEnterButton_);
}

void GridEditor::setFlag(bool& flag, bool v, bool relayout) {
  flag = v;
  setbuttons();
  if (relayout) resize();
}

void GridEditor::setEditStatus(bool v) { setFlag(editStatus_, v, false); }
void GridEditor::setDataRequire(bool v) { setFlag(dataRequire_, v, false); }
void GridEditor::setShowEnterButton(bool v) { setFlag(showEnterButton_, v, true); }
void GridEditor::setEditStatusShowAddButton(bool v) { setFlag(showAdd_, v, true); }
void GridEditor::setEditStatusShowInsertButton(bool v) { setFlag(showInsert_, v, true); }
void GridEditor::setEditStatusShowRemoveButton(bool v) { setFlag(showRemove_, v, true); }
void GridEditor::setEditStatusShowClearButton(bool v) { setFlag(showClear_, v, true); }
void GridEditor::setEditStatusShowMoveUpButton(bool v) { setFlag(showMoveUp_, v, true); }
void GridEditor::setEditStatusShowMoveDownButton(bool v) { setFlag(showMoveDown_, v, true); }

// ---- Running numbers ---------------------------------------------------------------------------------

void GridEditor::setEnableNumber(bool v) {
  enableNumber_ = v;
  if (v) {
    numberRows();
  } else {
    for (int32_t r = 1; r <= mfgData.MaxRows(); ++r) mfgData.SetText(0, r, QString());
    mfgData.markRowLayoutDirty(1);  // the numbers are gone: the next numbering starts at the top
  }
}

// The running numbers, and a row-header column wide enough for the widest of them, unless the
// application has set NumberWidth: the column grows with the count of digits and never narrows.
void GridEditor::numberRows() {
  step([&] { dbHelper().NumberRows(mfgData, 1, -1, 0, 0, 0, 1); });
  if (numberWidthSet_) return;
  int digits = 1;
  for (int32_t n = mfgData.MaxRows(); n >= 10; n /= 10) ++digits;
  if (digits <= numberDigits_) return;  // measured once per digit count
  numberDigits_ = digits;
  step([&] {
    const SpreadSurface::CellLook lk = mfgData.look(0, 1);
    tq7::Font f = mfgData.Font();
    if (!lk.fontName.isEmpty()) f.Name = lk.fontName;
    if (lk.fontSize > 0) f.Size = lk.fontSize;
    f.Bold = lk.bold;
    // The digits, and the cell's own margins and grid line on either side of them.
    const double need = std::ceil(platform().textWidth(f, QString(digits, u'0'))) + kNumberMargin;
    if (need > std::abs(mfgData.ColWidth(0))) mfgData.setColWidth(0, need);
  });
}

void GridEditor::setNumberWidth(float v) {
  if (v < 0) return;
  numberWidthSet_ = true;
  step([&] { mfgData.setColWidth(0, v); });
  step([&] { cmdOption.setWidth(v); });
  numberWidth_ = v;
  notifyChanged();
}

// ---- Surface events -------------------------------------------------------------------------------------

void GridEditor::Click(int32_t Col, int32_t Row) {
  if (RUNMODE != QLatin1String("VIEW") && Row >= 1 && Col >= 1 && Row <= mfgData.MaxRows() &&
      Col <= mfgData.MaxCols() && attribute(attr::FieldType, Col) == QLatin1String("CHECK")) {
    step([&] { Matrix1.SetValue(Row, Col, std::abs(1 - Matrix1.GetValue(Row, Col))); });
  }
  raise(&GridEditorEvents::SelChange);
  if (listener_) listener_->Click(Col, Row);
}

void GridEditor::ColWidthChange(int32_t Col1, int32_t Col2) {
  const int32_t keepCol = mfgData.Col(), keepCol2 = mfgData.Col2();
  for (int32_t c = std::min(Col1, Col2); c <= std::max(Col1, Col2); ++c) {
    if (mfgData.ColWidth(c) == 0) {
      mfgData.setCol(c);
      mfgData.setColHidden(true);
    }
  }
  mfgData.setCol(keepCol);
  mfgData.setCol2(keepCol2);
}

void GridEditor::RowHeightChange(int32_t Row1, int32_t Row2) {
  const int32_t keepRow = mfgData.Row(), keepRow2 = mfgData.Row2();
  for (int32_t r = std::min(Row1, Row2); r <= std::max(Row1, Row2); ++r) {
    if (mfgData.RowHeight(r) == 0) {
      mfgData.setRow(r);
      mfgData.setRowHidden(true);
    }
  }
  mfgData.setRow(keepRow);
  mfgData.setRow2(keepRow2);
}

void GridEditor::LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) {
  if (listener_) listener_->LeaveCell(Col, Row, NewCol, NewRow, Cancel);
}

void GridEditor::raise(void (GridEditorEvents::*ev)()) {
  if (listener_) (listener_->*ev)();
}

// ---- Companions, made on first use --------------------------------------------------------------------

Matrix& GridEditor::locks() {
  if (!locks_) locks_ = std::make_unique<Matrix>();
  return *locks_;
}

StandardHelper& GridEditor::helper() const {
  if (!helper_) helper_ = std::make_unique<StandardHelper>();
  return *helper_;
}

DatabaseHelper& GridEditor::dbHelper() {
  if (!dbHelper_) dbHelper_ = std::make_unique<DatabaseHelper>();
  return *dbHelper_;
}

// ---- Commands ----------------------------------------------------------------------------------------------

// The public name Refresh is the delete command, not a repaint; applications depend on it.
void GridEditor::Refresh() { cmdDelete_Click(); }

}  // namespace tq7
