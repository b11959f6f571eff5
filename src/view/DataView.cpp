// DataView: construction, layout, the definition and its requests, the SELECT text.
#include "view/DataView.h"

#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/Platform.h"

#include <cmath>

namespace tq7 {

namespace {
constexpr double kToolBarHeight = 390;
constexpr double kScrollWidth = 255;
constexpr double kLegendWidth = 1215;
}  // namespace

// ---- The SELECT text -------------------------------------------------------------------------------------

QString viewsql::selectText(const QString& fieldList, const QString& table, int32_t maxRecord,
                            const QString& connection) {
  if (maxRecord > 0) {
    const QString n = QString::number(maxRecord);
    if (vb::InStr(vb::UCase(connection), QStringLiteral("MYSQL")) > 0)
      return QStringLiteral("SELECT ") + fieldList + QStringLiteral(" FROM ") + table + QStringLiteral(" LIMIT ") + n +
             QStringLiteral(" ");
    // Two blanks stand before TOP; applications compare the text.
    return QStringLiteral("SELECT ") + QStringLiteral(" TOP ") + n + QStringLiteral(" ") + fieldList +
           QStringLiteral(" FROM ") + table;
  }
  return QStringLiteral("SELECT ") + fieldList + QStringLiteral(" FROM ") + table;
}

// The new condition comes first and the old one follows, with no parentheses. Before an ORDER BY
// the remainder keeps the blank of the old keyword, so two blanks stand behind ORDER BY.
QString viewsql::injectCondition(const QString& table, const QString& condition) {
  const QString upper = vb::UCase(table);
  const int32_t len = int32_t(table.size());
  int32_t p = StandardHelper().FindLast(upper, QStringLiteral(" WHERE "));
  if (p > 0)
    return vb::Left(table, p - 1) + QStringLiteral(" WHERE ") + condition + QStringLiteral(" AND ") +
           vb::Right(table, len - (p + 6));
  p = vb::InStr(upper, QStringLiteral(" ORDER BY "));
  if (p > 0)
    return vb::Left(table, p - 1) + QStringLiteral(" WHERE ") + condition + QStringLiteral(" ORDER BY ") +
           vb::Right(table, len - (p + 8));
  return table + QStringLiteral(" WHERE ") + condition;
}

// ---- Construction -----------------------------------------------------------------------------------------

DataView::DataView(QString name) : Control(std::move(name)) {
  for (Widget* w : std::initializer_list<Widget*>{&mfgFilter, &mfgData, &VScroll1, &TbrButton, &cmdLegend,
                                                  &cmdOption, &List2, &txtResult, &txtSQL, &Text1})
    addChild(*w);
  mfgData.setListener(this);
  mfgFilter.setVisible(false);
  txtResult.setVisible(false);
  txtSQL.setVisible(false);
  List2.setVisible(false);
  cmdLegend.setVisible(false);  // until a legend is set
  Text1.setVisible(false);
  Text1.setMultiLine(true);
  Text1.setLocked(true);
  VScroll1.setVisible(false);
  VScroll1.setMin(1);
  VScroll1.setMax(1);
  VScroll1.setValue(1);
  VScroll1.setWidth(kScrollWidth);
  VScroll1.onChange = [this] { VScroll1_Change(); };
  TbrButton.setHeight(kToolBarHeight);
  cmdLegend.setWidth(kLegendWidth);
  setUpToolBar();
  SelectStatus = true;
  EnbleNoneSelectEvent = false;
  helpHint_ = QString::fromUtf8("กดปุ่ม F1 เพื่อดูวิธีใช้ทั้งหมด");
  firstRecord_ = 1;
  queryOpened_ = false;
  numberWidth_ = 405;
  iActionCommandID = 0;
  setUpSurface();
  setSize(7140, 6135);
}

DataView::~DataView() {
  dataLoaded_ = false;
  mfgData.setListener(nullptr);
}

// A whole-row, read-only list: only the first header row and column show.
void DataView::setUpSurface() {
  SpreadSurface& s = mfgData;
  step([&] {
    s.setRow(-1);
    s.setCol(-1);
    s.setTypeVAlign(2);
    s.setCellType(celltype::StaticText);
    s.setLock(true);
  });
  step([&] {
    s.setMaxRows(0);
    s.setMaxCols(0);
  });
  step([&] {
    for (int32_t r = GridSurface::SpreadHeader + 1; r <= GridSurface::LastHeaderRow; ++r) s.setRowHeight(r, 0);
    for (int32_t c = GridSurface::SpreadHeader + 1; c <= GridSurface::LastHeaderCol; ++c) s.setColWidth(c, 0);
  });
  step([&] { s.setColWidth(0, numberWidth_); });
  step([&] { s.setToolTipText(helpHint_); });
  clickMode_ = 1;
}

// ---- Persisted properties -----------------------------------------------------------------------------------

void DataView::ReadProperties(const PropertyBag& bag) {
  step([&] { setNumberWidth(bag.ReadProperty(QStringLiteral("NumberWidth"), 405.0).toFloat()); });
}

void DataView::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("NumberWidth"), double(numberWidth_));
}

void DataView::setNumberWidth(float v) {
  if (v < 0) return;
  step([&] { mfgData.setColWidth(0, v); });
  step([&] { cmdOption.setWidth(v); });
  numberWidth_ = v;
  notifyChanged();
}

// ---- Layout and focus ------------------------------------------------------------------------------------------

void DataView::onResize() { layout(); }

void DataView::Resize() { layout(); }

void DataView::layout() {
  step([&] { TbrButton.setButtonVisible(QStringLiteral("Add"), iAddCommandID != 0); });
  step([&] { TbrButton.setButtonVisible(QStringLiteral("Edit"), iEditCommandID != 0); });
  step([&] { TbrButton.setButtonVisible(QStringLiteral("Delete"), iDeleteCommandID != 0); });
  // The filter switch lands on Print first and is overwritten at once, as it always was.
  step([&] { TbrButton.setButtonVisible(QStringLiteral("Print"), iFilterCommandID != 0); });
  step([&] { TbrButton.setButtonVisible(QStringLiteral("Print"), iPrintCommandID != 0); });
  step([&] {
    if (Width() <= 630) {
      if (Width() != 0) setWidth(0);
    } else {
      mfgData.setWidth(Width());
    }
  });
  step([&] {
    mfgData.setLeft(0);
    mfgData.setTop(0);
    if (TbrButton.Visible())
      mfgData.setHeight(std::abs(Height() - (TbrButton.Height() + 30)));
    else
      mfgData.setHeight(std::abs(Height() - 0));
  });
  step([&] {
    VScroll1.setTop(mfgData.Top());
    VScroll1.setHeight(mfgData.Height());
    if (VScroll1.Visible()) mfgData.setWidth(std::max(0.0, mfgData.Width() - VScroll1.Width()));
    VScroll1.setLeft(mfgData.Left() + mfgData.Width());
  });
  step([&] { Text1.Move(0, 0, mfgData.Width() + (VScroll1.Visible() ? VScroll1.Width() : 0), mfgData.Height()); });
  step([&] {
    cmdOption.Move(0, 0, std::abs(mfgData.ColWidth(0)), std::abs(mfgData.RowHeight(0)));
    if (cmdOption.Width() < 300) cmdOption.setWidth(405);
  });
  step([&] {
    cmdLegend.Move(mfgData.Left() + mfgData.Width() + (VScroll1.Visible() ? VScroll1.Width() : 0) - cmdLegend.Width(),
                   mfgData.Top() + mfgData.Height() + 30, cmdLegend.Width(), TbrButton.Height());
  });
  step([&] { TbrButton.Move(0, mfgData.Top() + mfgData.Height() + 30, Width(), TbrButton.Height()); });
}

void DataView::UserControl_Show() {
  step([&] { List2.setVisible(false); });
  step([&] {
    cmdOption.setWidth(std::abs(mfgData.ColWidth(0)));
    if (cmdOption.Width() < 300) cmdOption.setWidth(405);
  });
}

void DataView::onGotFocus() {
  List2.setVisible(false);
  if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
  step([&] {
    cmdOption.setWidth(std::abs(mfgData.ColWidth(0)));
    if (cmdOption.Width() < 300) cmdOption.setWidth(405);
  });
}

void DataView::onChildGotFocus(Widget& w) {
  if (&w == &mfgData) List2.setVisible(false);
}

int16_t DataView::SetParentForm(void* PassForm, bool ActionSingleControl) {
  parentForm_ = PassForm;
  if (ActionSingleControl) onChildGotFocus(mfgData);
  return 0;
}

void DataView::MouseWheel(int32_t MouseKeys, int32_t Rotation, int32_t Xpos, int32_t Ypos) {
  (void)MouseKeys, (void)Rotation, (void)Xpos, (void)Ypos;
}

int16_t DataView::SetText(int32_t Row, int32_t COL, const QString& StringValue) {
  step([&] { mfgData.SetText(COL, Row, StringValue); });
  return 1;
}

int32_t DataView::GETColByFieldName(const QString& FieldName) const {
  const QStringList fields = vb::Split(iFieldList, QStringLiteral(","));
  for (int i = 0; i < fields.size(); ++i)
    if (fields[i].compare(FieldName, Qt::CaseInsensitive) == 0) return i + 1;
  return 0;
}

// ---- Please-wait screen -------------------------------------------------------------------------------------------

int16_t DataView::SpeedProcess(bool Status) { return SpeedProcess2(Status, QString()); }

int16_t DataView::SpeedProcess2(bool Status, const QString& NewCaption) {
  if (Status) {
    speedMode_ = true;
    step([&] { Text1.setText(NewCaption.isEmpty() ? QStringLiteral("Loading Data Please wait...") : NewCaption); });
    step([&] { mfgData.setVisible(false); });
    step([&] { Text1.setVisible(true); });
  } else {
    speedMode_ = false;
    step([&] { mfgData.setVisible(true); });
    step([&] { Text1.setVisible(false); });
  }
  platform().processEvents();
  return 0;
}

// ---- Requests -----------------------------------------------------------------------------------------------------

void DataView::showData(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                        const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                        const QString& TableName, const QString& ConnectionString, int32_t AddCommand,
                        int32_t EditCommand, int32_t DeleteCommand, int32_t FilterCommand, int32_t PrintCommand,
                        int16_t inDateFormat, int32_t FormWidth, int32_t FormHeight, float FontHigh, bool FontBold,
                        bool MultiRowSelect) {
  (void)CapTure, (void)inDateFormat;
  iPrimaryName = PrimaryName;
  iFieldList = FieldList;
  iFieldLabelList = FieldLabelList;
  iFieldWidthList = FieldWidthList;
  iFieldTypeList = FieldTypeList;
  iTableName = TableName;
  iConnectionString = ConnectionString;
  iAddCommandID = AddCommand;
  iEditCommandID = EditCommand;
  iDeleteCommandID = DeleteCommand;
  iFilterCommandID = FilterCommand;
  iPrintCommandID = PrintCommand;
  iMultiRowSelect = MultiRowSelect;
  step([&] {
    if (FormWidth > 0) mfgData.setWidth(FormWidth);
  });
  step([&] {
    if (FormHeight > 0) mfgData.setHeight(FormHeight);
  });
  step([&] {
    tq7::Font f = mfgData.Font();
    if (FontHigh > 0) f.Size = FontHigh;
    f.Bold = FontBold;
    mfgData.setFont(f);
  });
  // The mode in the tooltip tests the language the other way round from the help box: a non-zero
  // flag gives the Thai words here. Applications show it as it is.
  step([&] {
    QString prefix;
    if (LanguageID() != 0)
      prefix = iMultiRowSelect ? QString::fromUtf8("[โหมดเลือกแบบหลายรายการ] - ")
                               : QString::fromUtf8("[โหมดเลือกรายการเดียว] - ");
    else
      prefix = iMultiRowSelect ? QStringLiteral("[Multi Select mode] - ") : QStringLiteral("[Single Select Mode] - ");
    mfgData.setToolTipText(prefix + helpHint_);
  });
  step([&] { selectText_ = viewsql::selectText(iFieldList, iTableName, MaxRecord, iConnectionString); });
  openQuery();
}

QString DataView::listResult() {
  if (iActionCommandID != 0) return QString::number(iActionCommandID) + QStringLiteral("#,") + TextResult;
  return TextResult;
}

QString DataView::SelectDataList4(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                                  const QString& FieldLabelList, const QString& FieldWidthList,
                                  const QString& FieldTypeList, const QString& TableName,
                                  const QString& ConnectionString, int16_t AddCommand, int16_t EditCommand,
                                  int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                                  int32_t FormWidth, int32_t FormHeight, float FontHigh, bool FontBold,
                                  bool MoveWindow, int32_t Top, int32_t Left, int16_t DisplayMode) {
  (void)MoveWindow, (void)Top, (void)Left;
  QString result;
  step([&] { TbrButton.setEnabled(false); });
  step([&] { mfgData.setVisible(false); });
  step([&] {
    if (DisplayMode == 2 || DisplayMode == 3) TbrButton.setVisible(false);
  });
  int32_t width = FormWidth;
  step([&] {
    if (width != 0) return;
    int32_t sum = 0;
    for (const QString& w : vb::Split(FieldWidthList, QStringLiteral(","))) sum += std::abs(vb::CLng(vb::Val(w)));
    width = sum > 0 ? sum + 400 : int32_t(Width());
  });
  const int32_t height = FormHeight != 0 ? FormHeight : int32_t(Height());
  showData(CapTure, PrimaryName, FieldList, FieldLabelList, FieldWidthList, FieldTypeList, TableName,
           ConnectionString, AddCommand, EditCommand, DeleteCommand, FilterCommand, PrintCommand, 0, width, height,
           FontHigh, FontBold, false);
  step([&] { result = listResult(); });
  step([&] { mfgData.setVisible(true); });
  step([&] { TbrButton.setEnabled(true); });
  platform().processEvents();
  return result;
}

QString DataView::SelectDataList7(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                                  const QString& FieldLabelList, const QString& FieldWidthList,
                                  const QString& FieldTypeList, const QString& TableName,
                                  const QString& ConnectionString, int16_t AddCommand, int16_t EditCommand,
                                  int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                                  int32_t FormWidth, int32_t FormHeight, float FontHigh, bool FontBold,
                                  bool MoveWindow, int32_t Top, int32_t Left, int16_t DisplayMode,
                                  int16_t FillBackGroupMode, bool MultiRowSelect, int32_t RecordPerPage,
                                  int16_t AddEditBaseTableMode, const QString& FieldValidCheckList,
                                  const QString& FieldDeleteCheckList, const QString& DefaultValueList,
                                  const QString& SeparateWHERE, const QString& SeparateORDER, int32_t iPageSize) {
  return SelectDataList8(CapTure, PrimaryName, FieldList, FieldLabelList, FieldWidthList, FieldTypeList, TableName,
                         ConnectionString, AddCommand, EditCommand, DeleteCommand, FilterCommand, PrintCommand,
                         FormWidth, FormHeight, FontHigh, FontBold, MoveWindow, Top, Left, DisplayMode,
                         FillBackGroupMode, MultiRowSelect, RecordPerPage, AddEditBaseTableMode, FieldValidCheckList,
                         FieldDeleteCheckList, DefaultValueList, SeparateWHERE, SeparateORDER, iPageSize, 0);
}

QString DataView::SelectDataList8(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                                  const QString& FieldLabelList, const QString& FieldWidthList,
                                  const QString& FieldTypeList, const QString& TableName,
                                  const QString& ConnectionString, int16_t AddCommand, int16_t EditCommand,
                                  int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                                  int32_t FormWidth, int32_t FormHeight, float FontHigh, bool FontBold,
                                  bool MoveWindow, int32_t Top, int32_t Left, int16_t DisplayMode,
                                  int16_t FillBackGroupMode, bool MultiRowSelect, int32_t RecordPerPage,
                                  int16_t AddEditBaseTableMode, const QString& FieldValidCheckList,
                                  const QString& FieldDeleteCheckList, const QString& DefaultValueList,
                                  const QString& SeparateWHERE, const QString& SeparateORDER, int32_t iPageSize,
                                  int32_t iMaxRecord) {
  (void)FormWidth, (void)MoveWindow, (void)Top, (void)Left, (void)FillBackGroupMode, (void)RecordPerPage;
  (void)AddEditBaseTableMode, (void)FieldValidCheckList, (void)FieldDeleteCheckList, (void)DefaultValueList;
  (void)SeparateWHERE, (void)SeparateORDER;
  PageSize = iPageSize;
  MaxRecord = iMaxRecord;
  QString result;
  step([&] { TbrButton.setEnabled(false); });
  step([&] { mfgData.setVisible(false); });
  step([&] {
    if (DisplayMode == 2 || DisplayMode == 3) TbrButton.setVisible(false);
  });
  // No width from the list here: the surface keeps its width whatever FormWidth says.
  const int32_t height = FormHeight != 0 ? FormHeight : int32_t(Height());
  showData(CapTure, PrimaryName, FieldList, FieldLabelList, FieldWidthList, FieldTypeList, TableName,
           ConnectionString, AddCommand, EditCommand, DeleteCommand, FilterCommand, PrintCommand, 0, 0, height,
           FontHigh, FontBold, MultiRowSelect);
  step([&] { result = listResult(); });
  step([&] { mfgData.setVisible(true); });
  step([&] { TbrButton.setEnabled(true); });
  platform().processEvents();
  return result;
}

QString DataView::AddExtraSearch(const QString& Caption, const QString& PrimaryName, const QString& FieldList,
                                 const QString& FieldLabelList, const QString& FieldWidthList,
                                 const QString& FieldTypeList, const QString& TableName) {
  xCaption = Caption;
  xPrimaryName = PrimaryName;
  xFieldList = FieldList;
  xFieldLabelList = FieldLabelList;
  xFieldWidthList = FieldWidthList;
  xFieldTypeList = FieldTypeList;
  xTableName = TableName;
  return QString();
}

// ---- Companions, made on first use --------------------------------------------------------------------------------

StandardHelper& DataView::helper() const {
  if (!helper_) helper_ = std::make_unique<StandardHelper>();
  return *helper_;
}

DatabaseHelper& DataView::dbHelper() {
  if (!dbHelper_) dbHelper_ = std::make_unique<DatabaseHelper>();
  return *dbHelper_;
}

void DataView::raise(void (DataViewEvents::*ev)()) {
  if (listener_) (listener_->*ev)();
}

}  // namespace tq7
