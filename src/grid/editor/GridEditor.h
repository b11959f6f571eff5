#pragma once
// The data-entry grid on the spreadsheet surface. Columns are declared into hidden attribute rows
// of the surface; values live in Matrix1 and the text follows them; the tool bar below the
// surface carries the record commands.
#include "companion/Matrix.h"
#include "controls/DateTimeView.h"
#include "controls/MonthCalendar.h"
#include "controls/MonthYearView.h"
#include "frame/Control.h"
#include "frame/SpreadSurface.h"
#include "grid/FieldKind.h"
#include "grid/editor/GridEditorEvents.h"

#include <QString>
#include <QVariant>
#include <cstdint>
#include <memory>
#include <optional>

namespace tq7 {

class StandardHelper;
class DatabaseHelper;
class IniFile;
namespace db {
class Connection;
class Recordset;
}

// Attribute rows of a column declaration, and the attribute columns of a record.
namespace attr {
constexpr int32_t GroupCaption2 = -999, GroupCaption1 = -998, Caption = -997, FieldName = -990, PrimaryKey = -989,
                  FieldType = -988, MaxLength = -987, CanEdit = -986, CanDeleteAlias = -985, CanDuplicate = -984,
                  ShellCommand = -983, CanBlank = -982, NumberOfDecimal = -981, DefaultValue = -980,
                  DefaultText = -979, Labels = -978, DisplayDecimal = -977, MinCon = -976, MinValue = -975,
                  MaxCon = -974, MaxValue = -973, LabelDataList = -972, ListWidth = -971, StopBlankMove = -969,
                  HAlign = -968, VAlign = -967, NoteWidth = -966, NoteHeight = -965;
// Columns of a record.
constexpr int32_t StoredKey = -989, RecordState = -988;
}  // namespace attr

class GridEditor : public Control, private GridSurfaceEvents, private MatrixEvents {
 public:
  explicit GridEditor(QString name = QStringLiteral("GridEditor1"));
  ~GridEditor() override;

  void setListener(GridEditorEvents* l) { listener_ = l; }

  // ---- Children ---------------------------------------------------------------------------------
  SpreadSurface mfgData;
  TextBox Text1{QStringLiteral("Text1")};  // whole-surface message box
  TextBox Text{QStringLiteral("Text")};    // in-cell editor overlay
  ListBox List1{QStringLiteral("List1")};
  ListBox List2{QStringLiteral("List2")};
  Button cmdOption{QStringLiteral("cmdOption")};
  Button cmdLegend{QStringLiteral("cmdLegend")};
  Button cmdSelect{QStringLiteral("cmdSelect")};
  ToolBar TbrButton{QStringLiteral("TbrButton")};
  Matrix Matrix1;

  // The images of the tool bar's image list, in its order.
  static const QStringList& ToolBarImages();

  // ---- Public fields ------------------------------------------------------------------------------
  int32_t ErrorNumber = 0;
  QString RUNMODE;
  int32_t RecordCount = 0;
  bool RecordSetReady = false;
  bool DOINGCLIP = false;

  // ---- Stored members -----------------------------------------------------------------------------
  int32_t TipWidth() const { return tipWidth_; }
  void setTipWidth(int32_t v) { tipWidth_ = v; }
  int32_t TipHeight() const { return tipHeight_; }
  void setTipHeight(int32_t v) { tipHeight_ = v; }
  int32_t ABSLeft() const { return absLeft_; }
  void setABSLeft(int32_t v) { absLeft_ = v; }
  int32_t ABSTop() const { return absTop_; }
  void setABSTop(int32_t v) { absTop_ = v; }
  bool ShowZeroValueText() const { return showZeroValueText_; }
  void setShowZeroValueText(bool v) { showZeroValueText_ = v; }
  bool DoubleClickNoAction() const { return doubleClickNoAction_; }
  void setDoubleClickNoAction(bool v) { doubleClickNoAction_ = v; }
  int16_t DoubleClickEventKeyCode() const { return doubleClickEventKeyCode_; }
  void setDoubleClickEventKeyCode(int16_t v) { doubleClickEventKeyCode_ = v; }
  int16_t DisableEditHighlight() const { return disableEditHighlight_; }
  void setDisableEditHighlight(int16_t v) { disableEditHighlight_ = v; }
  bool UseManualDeleteCheck() const { return useManualDeleteCheck_; }
  void setUseManualDeleteCheck(bool v) { useManualDeleteCheck_ = v; }
  bool StopActionAdd() const { return stopActionAdd_; }
  void setStopActionAdd(bool v) { stopActionAdd_ = v; }
  bool StopActionDelete() const { return stopActionDelete_; }
  void setStopActionDelete(bool v) { stopActionDelete_ = v; }
  bool EnableCheckAutoMoveNextRow() const { return enableCheckAutoMoveNextRow_; }
  void setEnableCheckAutoMoveNextRow(bool v) { enableCheckAutoMoveNextRow_ = v; }
  bool EnableCustomFunctionKey() const { return enableCustomFunctionKey_; }
  void setEnableCustomFunctionKey(bool v) { enableCustomFunctionKey_ = v; }
  bool EnableDeleteEventOnReadOnlyField() const { return enableDeleteEventOnReadOnlyField_; }
  void setEnableDeleteEventOnReadOnlyField(bool v) { enableDeleteEventOnReadOnlyField_ = v; }

  // Mode and tool bar flags: setting one runs setbuttons; the Show flags also re-lay out.
  bool EditStatus() const { return editStatus_; }
  void setEditStatus(bool v);
  bool DataRequire() const { return dataRequire_; }
  void setDataRequire(bool v);
  bool ShowEnterButton() const { return showEnterButton_; }
  void setShowEnterButton(bool v);
  bool EditStatusShowAddButton() const { return showAdd_; }
  void setEditStatusShowAddButton(bool v);
  bool EditStatusShowInsertButton() const { return showInsert_; }
  void setEditStatusShowInsertButton(bool v);
  bool EditStatusShowRemoveButton() const { return showRemove_; }
  void setEditStatusShowRemoveButton(bool v);
  bool EditStatusShowClearButton() const { return showClear_; }
  void setEditStatusShowClearButton(bool v);
  bool EditStatusShowMoveUpButton() const { return showMoveUp_; }
  void setEditStatusShowMoveUpButton(bool v);
  bool EditStatusShowMoveDownButton() const { return showMoveDown_; }
  void setEditStatusShowMoveDownButton(bool v);

  // Running numbers in the row header.
  bool EnableNumber() const { return enableNumber_; }
  void setEnableNumber(bool v);
  float NumberWidth() const { return numberWidth_; }
  void setNumberWidth(float v);

  // ---- Frame ---------------------------------------------------------------------------------------
  int32_t hwnd() const { return mfgData.hWnd(); }
  SpreadSurface& GETMSHFlexGrid() { return mfgData; }
  Matrix& GETGridValueObject() { return Matrix1; }
  db::Recordset* GETRecordset() { return rsid_.get(); }
  int16_t GETGridTYpe() const { return 1; }
  void iSendKeys(const QString& iString, bool Wait = false);
  int16_t SetParentForm(void* PassForm, bool ActionSingleControl = false);
  void* ParentForm() const { return parentForm_; }
  void SpeedProcess(bool Status);
  int16_t SpeedProcess2(bool Status, const QString& NewCaption = QString());
  void setbuttons();
  void ReSizeNow();
  void Refresh();
  QString Note() const { return Text1.Text(); }
  void setNote(const QString& v) { Text1.setText(v); }
  int16_t FixedCols() const { return 1; }
  int16_t FixedRows() const { return 1; }
  int16_t FirstColumn() const { return 1; }

  // Alignment constants.
  int16_t flexAlignLeftTop() const { return 0; }
  int16_t flexAlignLeftCenter() const { return 1; }
  int16_t flexAlignLeftBottom() const { return 2; }
  int16_t flexAlignCenterTop() const { return 3; }
  int16_t flexAlignCenterCenter() const { return 4; }
  int16_t flexAlignCenterBottom() const { return 5; }
  int16_t flexAlignRightTop() const { return 6; }
  int16_t flexAlignRightCenter() const { return 7; }
  int16_t flexAlignRightBottom() const { return 8; }
  int16_t flexAlignGeneral() const { return 9; }

  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // ---- Declaration ------------------------------------------------------------------------------
  int16_t SetFirst(int32_t Cols = 0);
  int16_t AddField(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                   const QString& Caption = QString(), int16_t DisplayDecimal = 0, const QString& MinCon = QString(),
                   double MinValue = 0, const QString& MaxCon = QString(), double MaxValue = 0,
                   int16_t MaxLength = 0, int16_t CanDuplicate = 0, int16_t CanBlank = 0, int16_t CanEdit = 0,
                   int16_t CanDeleteAlias = 0, int16_t Width = 0, int16_t TitleAlign = 0, int16_t RowAlign = 0,
                   const QString& LabelDataList = QString(), double DefaultValue = 0,
                   const QString& DefaultText = QString(), const QString& ShellCommand = QString(),
                   const QString& DisplayField = QString());
  int16_t addField2(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                    const QString& Caption = QString(), int16_t DisplayDecimal = 0, const QString& MinCon = QString(),
                    double MinValue = 0, const QString& MaxCon = QString(), double MaxValue = 0,
                    int16_t MaxLength = 0, int16_t CanDuplicate = 0, int16_t CanBlank = 0, int16_t CanEdit = 0,
                    int16_t CanDeleteAlias = 0, int16_t Width = 0, int16_t TitleAlign = 0, int16_t RowAlign = 0,
                    const QString& LabelDataList = QString(), double DefaultValue = 0,
                    const QString& DefaultText = QString(), const QString& ShellCommand = QString(),
                    const QString& DisplayField = QString(), int16_t NumberOfDecimal = 0, int32_t ListWidth = 0,
                    const QString& GroupCaption1 = QString(), const QString& GroupCaption2 = QString());
  int16_t addField3(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                    const QString& Caption = QString(), int16_t DisplayDecimal = 0, const QString& MinCon = QString(),
                    double MinValue = 0, const QString& MaxCon = QString(), double MaxValue = 0,
                    int16_t MaxLength = 0, int16_t CanDuplicate = 0, int16_t CanBlank = 0, int16_t CanEdit = 0,
                    int16_t CanDeleteAlias = 0, int16_t Width = 0, int16_t TitleAlign = 0, int16_t RowAlign = 0,
                    const QString& LabelDataList = QString(), double DefaultValue = 0,
                    const QString& DefaultText = QString(), const QString& ShellCommand = QString(),
                    const QString& DisplayField = QString(), int16_t NumberOfDecimal = 0, int32_t ListWidth = 0,
                    const QString& GroupCaption1 = QString(), const QString& GroupCaption2 = QString(),
                    int16_t StopBlankMove = 0);
  int32_t GetRowCaption() const { return attr::Caption; }
  int32_t GetRowGroupCaption1() const { return attr::GroupCaption1; }
  int32_t GetRowGroupCaption2() const { return attr::GroupCaption2; }
  bool IsColHidden(int32_t iColumn);
  double SetColumnWidth(int32_t iColumn, double Value);

  // The declared widths, "Column,Width" entries joined by semicolons, in the order of declaration.
  const QString& DeclaredWidths() const { return declaredWidths_; }
  int32_t HighestDeclaredColumn() const { return highestColumn_; }
  int16_t PrimaryKeyColumn() const { return primaryKeyColumn_; }
  const QString& PrimaryKeyName() const { return primaryKeyName_; }

  // ---- Lifecycle and load ------------------------------------------------------------------------
  int16_t SetData(const QString& Caption, const QString& Table, const QString& WHERE, const QString& ORDER,
                  const QString& PKLIST = QString(), int16_t ReadOnly = 0,
                  const QString& DataConnectionString = QString(), const QString& AppConnectionString = QString());
  void SetLast(const QString& FolderPathName, const QString& ControlName, const QString& UserID);
  void SetLast2(const QString& FolderPathName, const QString& ControlName, const QString& UserID,
                const QString& UserConnectionString, const QString& AppConnectionString);
  void SetLast3(const QString& FolderPathName, const QString& ControlName, const QString& UserID,
                const QString& UserConnectionString, const QString& AppConnectionString, bool SkipDefault = false);
  void ApplyColumnFormat(const QString& Text);
  void GridReady();
  void GridReady2(bool SkipDefault = false);
  void FillData();
  void FillData3(bool UseTableCheck = false, bool UseFieldCheck = false);
  void AppendData();
  void AppendData3(bool UseTableCheck = false, bool UseFieldCheck = false);
  void AppendData4(bool UseTableCheck = false, bool UseFieldCheck = false, bool AutoShow = false);
  bool Loading() const { return loading_; }

  // ---- Defaults of a row ------------------------------------------------------------------------
  void FillINI();
  void FillINI2(std::optional<int32_t> iRow = std::nullopt);

  // ---- Record append ------------------------------------------------------------------------------
  void cmdAdd_Click();
  void cmdAppend_Click(bool WithColor = false);
  void cmdAddNewNoCheck();

  // ---- Record and column mapping ------------------------------------------------------------------
  int32_t Row2Record(int32_t Row) const { return Row < 0 ? -Row : Row; }
  int32_t DataRow(int32_t Row) const { return Row2Record(Row); }
  int32_t Col2Column(int32_t COL) const { return COL < 0 ? -COL : COL; }
  int32_t DataCol(int32_t COL) const { return Col2Column(COL); }
  int32_t Record2Row(int32_t Record) const;
  int32_t Column2Col(int32_t Column) const;
  int32_t Record() const { return mfgData.ActiveRow(); }
  void setRecord(int32_t v);
  int32_t Column() const { return mfgData.ActiveCol(); }
  void setColumn(int32_t v);
  int32_t Row() const { return mfgData.ActiveRow(); }
  int32_t COL() const { return mfgData.ActiveCol(); }
  int32_t Rows() const { return mfgData.MaxRows(); }
  int32_t LastRecord() const { return mfgData.MaxRows(); }
  int32_t Cols() const { return mfgData.MaxCols(); }
  int32_t LastColumn() const { return mfgData.MaxCols(); }
  int32_t RecordSel() const { return Row2Record(mfgData.SelBlockRow2()); }
  void setRecordSel(int32_t v) { mfgData.setRow2(Record2Row(v)); }
  int32_t ColumnSel() const { return Col2Column(mfgData.SelBlockCol2()); }
  void setColumnSel(int32_t v) { mfgData.setCol2(Column2Col(v)); }
  int32_t SelBlockRow2() const { return mfgData.SelBlockRow2(); }
  int32_t SelBlockCol2() const { return mfgData.SelBlockCol2(); }
  void TopRecord(int32_t vData) { mfgData.setTopRow(Record2Row(vData)); }
  void LeftColumn(int32_t vData) { mfgData.setLeftCol(Column2Col(vData)); }
  // Records that are not marked deleted.
  int32_t RecordActiveCount() const;
  int32_t RecordActive() const;
  int32_t Record2RecordActive(int32_t iRecord) const;
  int32_t NextActiveRecord(int32_t BaseRecord) const;
  int32_t PreviousActiveRecord(int32_t BaseRecord) const;
  bool isRowWasMarkDeleted(int32_t Record) const { return mfgData.RowHeight(Record) == 0; }

  // ---- Cell values --------------------------------------------------------------------------------
  QString TextMatrix(int32_t Row, int32_t COL) const { return mfgData.GetText(COL, Row); }
  void setTextMatrix(int32_t Row, int32_t COL, const QString& text) { mfgData.SetText(COL, Row, text); }
  QString GETText(int32_t iRecord, int32_t iColumn) const;
  int16_t SetText(int32_t Record, int32_t Column, const QString& StringValue);
  double GETValue(int32_t iRecord, int32_t iColumn);
  int16_t SetValue(int32_t iRecord, int32_t iColumn, double Value);
  void Matrix1_DataChange() {}
  QString GETTextByColumnName(int32_t Record, const QString& ColumnName) const;
  // The value as a date; the zero date out of range.
  double GETDate2(int32_t Record, int32_t Column);
  double GETDate(int32_t Record, int32_t Column) { return GETDate2(Record, Column); }

  // ---- Colour legend and help box -------------------------------------------------------------------
  // Builds the legend from system settings named in iLegendList (",") and shows cmdLegend; 0 when
  // any argument is empty, and then nothing changes.
  int16_t SetLegend(const QString& iLegendList, const QString& iDataConnectionString,
                    const QString& iAppConnectionString);
  void cmdLegend_Click();
  // The keys of the present mode, in the grid's language, in an information box (F1).
  void ShowHelp();

  // ---- Locks of cells and records ---------------------------------------------------------------------
  // Mode 0 open, 1 locked unseen, 2 or more locked and shown in LockColor.
  int16_t CellLockMode(int32_t Record, int32_t Column, int16_t Mode);
  int16_t CellLockMode2(int32_t Record, int32_t Column, int16_t Mode, Colour LockColor = 0xFFC0C0,
                        Colour ClearColor = syscolor::Window);
  int16_t RecordLockMode(int32_t Record, int16_t Mode);
  int16_t RecordLockMode2(int32_t Record, int16_t Mode, Colour LockColor = 0xFFC0C0,
                          Colour ClearColor = syscolor::Window);

  // ---- Record validation ----------------------------------------------------------------------------
  int16_t CheckRecordStatus(int32_t Record);
  bool CheckDulicate(int32_t CheckColumn, const QVariant& CheckValue, std::optional<int32_t> SkipRecord = std::nullopt);
  QString CheckData();
  QString ValidData();
  QString GETErrorMessage(int32_t iRecord, int32_t iColumn, int32_t iTotalRecord, int16_t ForceLanguage = -1);
  int16_t CleanRecord(int32_t Record);

  // ---- Record commands ---------------------------------------------------------------------------------
  void cmdInsert_Click();
  void cmdInsertAfter_Click();
  void cmdDelete_Click();
  void cmdDeleteNoCheck(int32_t iRecord);
  void cmdMoveUp_Click();
  void cmdMoveDown_Click();
  void cmdMoveFirst_Click();
  void cmdMoveLast_Click();
  void cmdFreeze_Click();
  void SwitchRecord(int32_t FromRecord, int32_t ToRecord);
  void SetButtonOpenCaption(const QString& iLabel = QString());

  // ---- Cell editing -------------------------------------------------------------------------------
  // A drop-down that is a control of its own stands on the grid through a frame that carries its
  // place, its visibility and the grid's focus; the control itself is reached through ->.
  template <class C>
  class PickerFrame : public Widget {
   public:
    explicit PickerFrame(QString name) : Widget(std::move(name)) {}
    C* operator->() { return &view; }
    C& operator*() { return view; }
    C view;
  };
  // The pickers: DATE, DATETIME and PERIOD cells.
  MonthCalendar MonthView1{QStringLiteral("MonthView1")};
  PickerFrame<DateTimeView> DateTimeView1{QStringLiteral("DateTimeView1")};
  PickerFrame<MonthYearView> MonthYearView1{QStringLiteral("MonthYearView1")};

  // The hook of a column's ShellCommand; no quick form answers, so it is always empty.
  QString SelectQuickForm(QString& QuickFormAlias);
  // Handlers the host calls, by the overlays' names.
  void Text_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void Text_KeyPress(int16_t& KeyAscii);
  void Text_GotFocus();
  void List1_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void List1_DblClick();
  void List1_LostFocus();
  void MonthView1_DateDblClick(double DateDblClicked);
  void MonthView1_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void DateTimeView1_DateClick(double DateClicked);
  void DateTimeView1_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void MonthYearView1_MonthClick(int16_t EMonth, int16_t EYear);
  void MonthYearView1_KeyDown(int16_t& KeyCode, int16_t& Shift);

  // ---- Keys ------------------------------------------------------------------------------------------
  // Runs the key dispatcher as if the key had been pressed on the surface (keys from other forms).
  void RunAction_KeyDown(int16_t& KeyCode, int16_t& Shift);
  // Moves the cursor to the next column that takes input, in the active row.
  void NextColumnInput();
  // Scrolls by the rows in view less one, at least 10; a positive Rotation scrolls up.
  void MouseWheel(int32_t MouseKeys, int32_t Rotation, int32_t Xpos, int32_t Ypos);

 protected:
  void onResize() override;
  void onGotFocus() override;
  void onChildGotFocus(Widget& w) override;

 private:
  // Surface events.
  void Click(int32_t Col, int32_t Row) override;
  void ColWidthChange(int32_t Col1, int32_t Col2) override;
  void RowHeightChange(int32_t Row1, int32_t Row2) override;
  void LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) override;
  void DblClick(int32_t Col, int32_t Row) override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void KeyPress(int16_t& KeyAscii) override;
  void KeyUp(int16_t& KeyCode, int16_t& Shift) override;
  // The key dispatcher's parts.
  bool keyOnForeignCell();
  void relayKey(int16_t& KeyCode, int16_t& Shift);
  void openCellByKey(int16_t& KeyCode, int16_t& Shift);
  void multiLineByKey();
  void findByKey(const QString& text);
  void clearBlockByKey();
  bool pasteAllowed();
  void pasteByKey();
  // The cell editing's side of the key dispatcher: the overlays' key action and text editor, and
  // what a typed character opens in a cell from Browse in edit mode.
  void BeginTextEdit(GridSurface& surface, TextBox& textBox, int16_t KeyAscii);
  void TextKeyAction(GridSurface& surface, TextBox& textBox, int16_t& KeyCode, int16_t& Shift);
  void startCellEditor(int16_t KeyAscii);
  // Matrix events: the rendering of a value into its cell's text.
  void CellDataChange(int32_t& Row, int32_t& Column) override;

  void LoadRecords(bool ClearFirst, db::Connection& data, db::Connection& app, bool UseTableCheck,
                   bool UseFieldCheck, bool AutoShow);
  void load(bool ClearFirst, bool UseTableCheck, bool UseFieldCheck, bool AutoShow, bool disableBar);
  void joinCaptions();
  void numberRows();
  void hideOverlays();
  // One step of a record up or down over the live rows; false when there was nowhere to go.
  bool moveStep(bool down, bool asCommand);
  void exchangeRows(int32_t a, int32_t b, bool recordColumns);
  void appendRecord(bool cursorFirst);
  void bubbleUpTo(int32_t r);
  void moveToEnd(bool down);
  void markDeleted(int32_t row);
  void setUpSurface();
  void setUpToolBar();
  void onToolBarClick(const QString& key);
  void resize();
  void setFlag(bool& flag, bool v, bool relayout);
  const QString& attribute(int32_t attrRow, int32_t col) const { return mfgData.cellText(col, attrRow); }
  void setAttribute(int32_t attrRow, int32_t col, const QString& text) { mfgData.SetText(col, attrRow, text); }
  // Sets TypeHAlign and TypeVAlign of the pointed cells from a flexAlign value; General changes nothing.
  void applyAlignment(int16_t flexAlign, bool titleRow);
  void emptyDateTest(int32_t row, int32_t col);
  void showCheckCell(int32_t row, int32_t col, double value);
  QString labelAt(int32_t col, double position) const;
  // What a column's attribute texts say, read when first asked and kept until a header text of
  // the surface changes: a load and every new row ask it for each column. A number whose text
  // fails to convert is not kept (its flag is false): it is converted again where it is used, so
  // that it fails there as it always did.
  struct ColumnFacts {
    FieldKind kind = FieldKind::None;
    bool named = false;       // row -990 holds a field name
    bool primaryKey = false;  // row -989 is "1"
    bool alignOk = false, decimalsOk = false, positionOk = false;
    int16_t h = 0, v = 0;         // rows -968 and -967
    int16_t displayDecimal = 0;   // row -977
    int16_t defaultPosition = 0;  // row -980 as a whole number
    double defaultValue = 0;      // row -980
  };
  struct ColumnCache {
    bool known = false, labelsKnown = false;
    ColumnFacts facts;
    QStringList labels;
  };
  ColumnCache* cacheOf(int32_t col) const {
    if (col < 0 || col > mfgData.MaxCols()) return nullptr;
    if (cacheEdits_ != mfgData.headerTextEdits() || size_t(col) >= columnCache_.size()) renewColumnCache();
    return &columnCache_[size_t(col)];
  }
  void renewColumnCache() const;
  // Columns without a field type get nothing but their look in a new row; runs of them side by
  // side are written in one call. The last column of the run that starts at a column (0: none),
  // kept with the column cache.
  int32_t plainRunEnd(int32_t col) const;
  // The first column after `col` whose row -990 names a field, MaxCols + 1 when none; a load
  // walks only those. Kept with the column cache.
  int32_t nextNamedColumn(int32_t col) const;
  // By value: a caller may raise events, and their handlers may write header texts, before it is done.
  ColumnFacts factsOf(int32_t col) const {
    ColumnCache* c = cacheOf(col);
    if (!c) return readFacts(col);
    if (!c->known) {
      c->facts = readFacts(col);
      c->known = true;
    }
    return c->facts;
  }
  ColumnFacts readFacts(int32_t col) const;
  // The text of a value in one of the forms the grid shows: a number with `arg` decimals, a date
  // or a date and time with `arg` as the flag of DateText, a period, a time, hours, a day count
  // with time, a year. The latest texts are kept by value, so that a value that is rendered on
  // its write and again by the load, or that repeats down a column, is formatted once and its
  // cells share one text.
  enum class Form : uint8_t { Number, Date, Period, DateTime, Time, Hour, DayTime, Year };
  // The reference holds until the next call.
  const QString& shown(Form form, double v, int16_t arg = 0) const;
  static const QString& noText() {
    static const QString none;
    return none;
  }
  struct ShownText {
    uint64_t bits = 0;
    int16_t arg = 0, yearOffset = 0;
    Form form = Form::Number;
    bool used = false;
    QString text;
  };
  mutable std::vector<ShownText> shownTexts_;
  // What the empty-date test answered for a text, under a year offset.
  struct TestedDate {
    QString text;
    int32_t yearOffset = -1;
    bool empty = false;
  };
  std::vector<TestedDate> testedDates_;
  // Row -977 as a whole number, converted again when its text fails to convert.
  int16_t decimalsOf(const ColumnFacts& f, int32_t col) const;
  const QStringList& labelsOf(int32_t col, QStringList& scratch) const;
  QString numberText(double v, int decimals) const;
  Matrix& locks();
  StandardHelper& helper() const;
  DatabaseHelper& dbHelper();
  void raise(void (GridEditorEvents::*ev)());

  GridEditorEvents* listener_ = nullptr;
  std::unique_ptr<Matrix> locks_;
  mutable std::unique_ptr<StandardHelper> helper_;
  std::unique_ptr<DatabaseHelper> dbHelper_;
  std::unique_ptr<db::Recordset> rsid_;
  void* parentForm_ = nullptr;

  int32_t tipWidth_ = 0, tipHeight_ = 0;
  int32_t absLeft_ = 0, absTop_ = 0;
  bool showZeroValueText_ = false;
  bool enableNumber_ = false;
  float numberWidth_ = 0;
  bool numberWidthSet_ = false;  // the application's NumberWidth stands
  int numberDigits_ = 0;         // digits of the widest running number the column was fitted to
  bool editStatus_ = false;
  bool showAdd_ = false, showInsert_ = false, showRemove_ = false, showClear_ = false;
  bool showMoveUp_ = false, showMoveDown_ = false, showEnterButton_ = false;
  bool doubleClickNoAction_ = false;
  int16_t doubleClickEventKeyCode_ = 0;
  int16_t disableEditHighlight_ = 0;
  bool dataRequire_ = false, useManualDeleteCheck_ = false, stopActionAdd_ = false, stopActionDelete_ = false;
  bool enableCheckAutoMoveNextRow_ = false, enableCustomFunctionKey_ = false;
  bool enableDeleteEventOnReadOnlyField_ = false;
  bool showFreeze_ = false;  // the Freeze button's visibility flag, True from creation
  bool alive_ = false;       // cleared on destruction

  // What SetData and the SetLast family leave.
  QString table_, where_, order_;
  QString dataConnection_, appConnection_, userConnection_;
  QString folderPath_, controlName_;
  int32_t userNumber_ = 0;
  bool loading_ = false;
  int32_t lastActiveRow_ = 0;  // kept when the overlays are hidden in edit mode

  double defaultRowHeight_ = 0;
  int32_t highestColumn_ = 0;
  int16_t primaryKeyColumn_ = 0;
  QString primaryKeyName_;
  QString declaredWidths_;
  QString helpTip_;
  struct ColourPair {
    Colour back, fore;
  };
  ColourPair colours_[3]{};
  mutable std::vector<ColumnCache> columnCache_;
  mutable uint32_t cacheEdits_ = 0;
  mutable std::vector<int32_t> plainRunEnd_;  // by column; empty until asked after a renewal
  mutable std::vector<SpreadSurface::RowLook> plainLooks_;
  mutable std::vector<int32_t> nextNamed_;  // by column; empty until asked after a renewal
  // The colour legend: "<colour>;<description>" entries joined by ","; empty, no legend.
  QString legendList_;

  // Cell editing: the surface's new selection loads the text box; the overlays' focus.
  void SelChange(int32_t BlockCol, int32_t BlockRow, int32_t BlockCol2, int32_t BlockRow2, int32_t CurCol,
                 int32_t CurRow) override;
  void ActiveCellSet(int32_t Col, int32_t Row) override;
  void loadTextBox(int32_t col, int32_t row);
  void onChildLostFocus(Widget& w) override;
  void commitText(GridSurface& surface, TextBox& textBox);
  void openList(GridSurface& surface);
  void openPicker(GridSurface& surface, Widget& picker);
  void pickerChosen(Widget& picker, const QString& text);
  void pickerEscape(Widget& picker);
  void setUpPickers();
  struct DateTimeView1Events : DateTimeViewEvents {
    GridEditor* g = nullptr;
    void KeyDown(int16_t& KeyCode, int16_t& Shift) override { g->DateTimeView1_KeyDown(KeyCode, Shift); }
    void DateClick(double DateClicked) override { g->DateTimeView1_DateClick(DateClicked); }
  } dateTimeView1Events_;
  struct MonthYearView1Events : MonthYearViewEvents {
    GridEditor* g = nullptr;
    void KeyDown(int16_t& KeyCode, int16_t& Shift) override { g->MonthYearView1_KeyDown(KeyCode, Shift); }
    void MonthClick(int16_t EMonth, int16_t EYear) override { g->MonthYearView1_MonthClick(EMonth, EYear); }
  } monthYearView1Events_;
};

}  // namespace tq7
