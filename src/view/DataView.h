#pragma once
// The browse view on the spreadsheet surface: an application hands it a key list, parallel lists
// of fields, headings, widths and type codes, a table expression and a connection string; the
// view shows the result page by page, lets the user filter, search and mark rows, and reports the
// chosen keys back as text when a command is pressed.
//
// The whole result is fetched onto the client by the query open; a page is no more than the
// position from which the surface is filled again.
#include "companion/Matrix.h"
#include "frame/Control.h"
#include "frame/SpreadSurface.h"
#include "view/DataViewEvents.h"

#include <QHash>
#include <QImage>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <vector>

namespace tq7 {

class StandardHelper;
class DatabaseHelper;
namespace db {
class Connection;
class Recordset;
}  // namespace db

// The statements of the view, kept apart so that every dialect rule reads in one place.
namespace viewsql {
// The first form: the whole definition, capped by MaxRecord when it is above 0 (LIMIT for a
// connection that names MySQL, TOP for any other).
QString selectText(const QString& fieldList, const QString& table, int32_t maxRecord, const QString& connection);
// A condition put into a table expression in front of its last WHERE condition, or before its
// first ORDER BY, or at its end.
QString injectCondition(const QString& table, const QString& condition);
}  // namespace viewsql

class DataView : public Control, private GridSurfaceEvents {
 public:
  explicit DataView(QString name = QStringLiteral("DataView1"));
  ~DataView() override;

  void setListener(DataViewEvents* l) { listener_ = l; }
  // The language of the view's texts (0 Thai, anything else English), as the settings give it.
  using Control::setLanguageID;

  // ---- Children ---------------------------------------------------------------------------------
  SpreadSurface mfgData;
  ScrollBar VScroll1{QStringLiteral("VScroll1")};
  TextBox Text1{QStringLiteral("Text1")};  // the message box over the surface
  ToolBar TbrButton{QStringLiteral("TbrButton")};
  Button cmdOption{QStringLiteral("cmdOption")};
  ListBox List2{QStringLiteral("List2")};
  Button cmdLegend{QStringLiteral("cmdLegend")};
  TextBox txtResult{QStringLiteral("txtResult")};  // hidden: the result box of GetSelect
  TextBox txtSQL{QStringLiteral("txtSQL")};        // hidden
  Widget mfgFilter{QStringLiteral("mfgFilter")};   // a second grid in the layout, with nothing behind it
  // The image list of the bar: its keys in order, and the pictures an application added.
  QStringList ImlIcon;
  QHash<QString, QImage> ImlIconPictures;

  // ---- Public variables ---------------------------------------------------------------------------
  int32_t RecordCount = 0;
  int32_t PageSize = 0;
  int32_t MaxRecord = 0;
  bool DoIcon = false;
  QString iDateFormat;
  QString iPrimaryName;
  QString iFieldList;
  QString iFieldLabelList;
  QString iFieldWidthList;
  QString iFieldTypeList;
  QString iTableName;
  QString iConnectionString;
  int32_t iActionCommandID = 0;
  int32_t iAddCommandID = 0, iEditCommandID = 0, iDeleteCommandID = 0, iModifyCommandID = 0, iPrintCommandID = 0,
          iFilterCommandID = 0;
  bool iMultiRowSelect = false;
  bool EscapeAction = false;
  QString xCaption, xPrimaryName, xFieldList, xFieldLabelList, xFieldWidthList, xFieldTypeList, xTableName;
  bool SelectStatus = true;
  bool EnbleNoneSelectEvent = false;
  QString TextResult;
  int32_t ErrorNumber = 0;

  // ---- Requests ---------------------------------------------------------------------------------------
  void showData(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                const QString& TableName, const QString& ConnectionString, int32_t AddCommand, int32_t EditCommand,
                int32_t DeleteCommand, int32_t FilterCommand, int32_t PrintCommand, int16_t inDateFormat = 0,
                int32_t FormWidth = 0, int32_t FormHeight = 0, float FontHigh = 0, bool FontBold = false,
                bool MultiRowSelect = false);
  QString SelectDataList4(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                          const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                          const QString& TableName, const QString& ConnectionString, int16_t AddCommand,
                          int16_t EditCommand, int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                          int32_t FormWidth = 0, int32_t FormHeight = 0, float FontHigh = 0, bool FontBold = false,
                          bool MoveWindow = false, int32_t Top = 0, int32_t Left = 0, int16_t DisplayMode = 0);
  QString SelectDataList7(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                          const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                          const QString& TableName, const QString& ConnectionString, int16_t AddCommand,
                          int16_t EditCommand, int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                          int32_t FormWidth = 0, int32_t FormHeight = 0, float FontHigh = 0, bool FontBold = false,
                          bool MoveWindow = false, int32_t Top = 0, int32_t Left = 0, int16_t DisplayMode = 0,
                          int16_t FillBackGroupMode = 0, bool MultiRowSelect = false, int32_t RecordPerPage = 0,
                          int16_t AddEditBaseTableMode = 0, const QString& FieldValidCheckList = QString(),
                          const QString& FieldDeleteCheckList = QString(), const QString& DefaultValueList = QString(),
                          const QString& SeparateWHERE = QString(), const QString& SeparateORDER = QString(),
                          int32_t iPageSize = 0);
  QString SelectDataList8(const QString& CapTure, const QString& PrimaryName, const QString& FieldList,
                          const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                          const QString& TableName, const QString& ConnectionString, int16_t AddCommand,
                          int16_t EditCommand, int16_t DeleteCommand, int16_t FilterCommand, int32_t PrintCommand,
                          int32_t FormWidth = 0, int32_t FormHeight = 0, float FontHigh = 0, bool FontBold = false,
                          bool MoveWindow = false, int32_t Top = 0, int32_t Left = 0, int16_t DisplayMode = 0,
                          int16_t FillBackGroupMode = 0, bool MultiRowSelect = false, int32_t RecordPerPage = 0,
                          int16_t AddEditBaseTableMode = 0, const QString& FieldValidCheckList = QString(),
                          const QString& FieldDeleteCheckList = QString(), const QString& DefaultValueList = QString(),
                          const QString& SeparateWHERE = QString(), const QString& SeparateORDER = QString(),
                          int32_t iPageSize = 0, int32_t iMaxRecord = 0);
  QString AddExtraSearch(const QString& Caption, const QString& PrimaryName, const QString& FieldList,
                         const QString& FieldLabelList, const QString& FieldWidthList, const QString& FieldTypeList,
                         const QString& TableName);

  // ---- Small members ---------------------------------------------------------------------------------
  db::Recordset* GETRecordset() { return rsid_.get(); }
  SpreadSurface& GETMSHFlexGrid() { return mfgData; }
  Matrix& GETGridValueObject() { return Matrix1_; }
  int32_t GETColByFieldName(const QString& FieldName) const;
  int32_t hwnd() const { return mfgData.hWnd(); }
  int16_t GETGridTYpe() const { return 1; }
  int32_t Cols() const { return mfgData.MaxCols(); }
  int32_t Row() const { return mfgData.ActiveRow(); }
  int32_t LastRecord() const { return mfgData.MaxRows(); }
  // Record, row and column numbers are one thing in this view.
  int32_t Record2Row(int32_t Record) const { return Record < 0 ? -Record : Record; }
  int32_t Column2Col(int32_t Column) const { return Column < 0 ? -Column : Column; }
  QString TextMatrix(int32_t Row, int32_t COL) const { return mfgData.GetText(COL, Row); }
  void setTextMatrix(int32_t Row, int32_t COL, const QString& text) { mfgData.SetText(COL, Row, text); }
  int16_t SetText(int32_t Row, int32_t COL, const QString& StringValue);
  void MouseWheel(int32_t MouseKeys, int32_t Rotation, int32_t Xpos, int32_t Ypos);
  int16_t SetParentForm(void* PassForm, bool ActionSingleControl = false);
  void* ParentForm() const { return parentForm_; }

  // ---- Query, fill and layout ---------------------------------------------------------------------------
  // The statement the next open runs, "#$" kept where a date stands.
  const QString& SelectText() const { return selectText_; }
  void DataRefresh();
  void Resize();
  // The control is shown: the options list closes and the options button takes column 0's width.
  void UserControl_Show();
  int16_t SpeedProcess(bool Status);
  int16_t SpeedProcess2(bool Status, const QString& NewCaption = QString());
  float NumberWidth() const { return numberWidth_; }
  void setNumberWidth(float v);
  const QString& HelpHint() const { return helpHint_; }
  // The page position: 1-based row of the result that heads the page.
  int32_t FirstRecord() const { return firstRecord_; }
  bool QueryOpened() const { return queryOpened_; }
  bool DataLoaded() const { return dataLoaded_; }
  // The scroll bar moved: a new page.
  void VScroll1_Change();
  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // ---- Selection ------------------------------------------------------------------------------------------
  void cmdMark_Click(int32_t sRecord = 0);
  void GetSelect();
  QString GetSelectATCursor();
  void RemoveActiveRow();
  void FillColorRectangle(Colour BackColor, Colour ForeColor, int32_t FromRecord, int32_t FromColumn,
                          int32_t ToRecord, int32_t ToColumn, int16_t FillHeight = 0, int16_t SkipHeight = 0,
                          const QString& ColumnList = QString());
  // The heading click of the surface: 1 sorts, 0 selects the column for its sum.
  int16_t ClickMode() const { return clickMode_; }
  // Whether row r carries the mark.
  bool isMarked(int32_t r) const { return mfgData.cellText(kMarkCol, r) == u"Y"; }

  // ---- Command bar ---------------------------------------------------------------------------------------
  void setbuttons(bool bval);
  void SetButonStatus(bool AddEnable = false, bool AddVisible = false, bool EditEnable = false,
                      bool EditVisible = false, bool DeleteEnable = false, bool DeleteVisible = false,
                      bool PrintEnable = false, bool PrintVisible = false);
  void SetButonStatus2(bool AddEnable = false, bool AddVisible = false, bool EditEnable = false,
                       bool EditVisible = false, bool DeleteEnable = false, bool DeleteVisible = false,
                       bool PrintEnable = false, bool PrintVisible = false, bool SearchEnable = true,
                       bool SearchVisible = true, bool FilterEnable = true, bool FreezeVisible = true,
                       bool FreezeEnable = true, bool FilterVisible = true, bool CloseEnable = true,
                       bool CloseVisible = true, bool SelectEnable = true, bool SelectVisible = true,
                       bool OpenEnable = false, bool OpenVisible = false);
  void SetButtonLabel(const QString& AddLabel = QString(), const QImage& AddIcon = QImage(),
                      const QString& PrintLabel = QString(), const QImage& PrintIcon = QImage(),
                      const QString& EditLabel = QString(), const QImage& EditIcon = QImage(),
                      const QString& DeleteLabel = QString(), const QImage& DeleteIcon = QImage());
  void SetButtonOpenCaption(const QString& iLabel = QString());
  // The button of a key, as the bar holds it.
  const ToolButton& button(const QString& key) { return TbrButton.Buttons(key); }
  // The commands, as the buttons and keys run them.
  void cmdAdd_Click();
  void cmdEdit_Click();
  void cmdDelete_Click();
  void cmdPrint_Click();
  void cmdExport_Click();
  void cmdCancel_Click();
  void cmdOpen_Click();
  void cmdSelect_Click();
  void cmdFreeze_Click();
  // The filter tool over the view's own definition, and the search over the alternative one.
  void FilterTool();
  void SearchTool();
  // F1: the keys of the view in its language.
  void ShowHelp();
  // The bar's click, by key.
  void TbrButton_ButtonClick(const QString& key);

  static constexpr int32_t kMarkCol = -988;
  static constexpr int32_t kPositionCol = -1000;
  static constexpr Colour kMarkBack = 0xFFC0C0;
  static constexpr Colour kMarkFore = 0x80000012u;

 protected:
  void onResize() override;
  void onGotFocus() override;
  void onChildGotFocus(Widget& w) override;

 private:
  // Surface events.
  void Click(int32_t Col, int32_t Row) override;
  void DblClick(int32_t Col, int32_t Row) override;
  void ColWidthChange(int32_t Col1, int32_t Col2) override;
  void LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void KeyPress(int16_t& KeyAscii) override;
  void KeyUp(int16_t& KeyCode, int16_t& Shift) override;
  void MouseDown(int16_t Button, int16_t Shift, double X, double Y) override;
  void MouseUp(int16_t Button, int16_t Shift, double X, double Y) override;

  void openQuery();
  void queryFailed(int32_t number, const QString& description, const QString& sent);
  void fill();
  // The text of one field of the current record by the view's type code.
  QString cellText(int16_t type, int32_t field, int32_t col);
  // Empties a date text that holds one of the empty-date years.
  void blankEmptyDate(QString& text) const;
  void setUpSurface();
  void setUpToolBar();
  void layout();
  QString listResult();
  void markRow(int32_t r, bool mark);
  void markAll(bool mark);
  QString rowKey(int32_t r) const;
  void dragSummary();
  void runTool(bool search);
  void raise(void (DataViewEvents::*ev)());
  bool buttonReady(const QString& key);
  StandardHelper& helper() const;
  DatabaseHelper& dbHelper();

  DataViewEvents* listener_ = nullptr;
  Matrix Matrix1_;  // the selection
  mutable std::unique_ptr<StandardHelper> helper_;
  std::unique_ptr<DatabaseHelper> dbHelper_;
  std::unique_ptr<db::Connection> connection_;
  std::unique_ptr<db::Recordset> rsid_;
  void* parentForm_ = nullptr;

  QString selectText_;
  int32_t firstRecord_ = 1;
  bool queryOpened_ = false;
  bool dataLoaded_ = false;
  bool speedMode_ = false;
  QString helpHint_;
  float numberWidth_ = 405;
  int16_t clickMode_ = 1;
  bool deleteShown_ = false, printShown_ = false, searchShown_ = false;

  // What a fill keeps between its calls, so that a page allocates nothing per cell.
  struct FillColumn {
    int32_t field = -1;  // position in the result; -1 when the result lacks the name
    int16_t type = 0;
    QStringList labels;  // type 13: heading;text0;text1;...
  };
  std::vector<FillColumn> fillColumns_;
};

}  // namespace tq7
