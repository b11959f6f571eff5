// DataView: the command bar, the command keys, the filter and search tools, the help box.
#include "companion/DatabaseHelper.h"
#include "companion/VbText.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "view/DataView.h"
#include "view/FilterData.h"

namespace tq7 {

namespace {

const char* const kHelpEnglish[] = {
    "Press any charector for move to next record match that charector",
    "Press again to move next",
    "กด F2   for Search Record (Search in All Database without Top Filter)",
    "Press F6   to Filter Display on Grid (Multi Level Support)",
    "Press F7   Find record with more than 1 charector input (only display in grid)",
    "Press F8   To Lock/Cancel Lock column on the left of Cursor",
    "Press Space bar for Select/De select (incase of Multi Select Enable [M] )",
    "Double Click for Select/De select (incase of Multi Select Enable [M] )",
    "Press Ctrl+A   Select All records (incase of Multi Select Enable [M] )",
    "Press Ctrl+C   Copy Data on Cursor position",
    "Press Ctrl+Z   DeSelect All records (incase of Multi Select Enable [M] )",
    "Drag Select Cell for Display Summary of Draged",
    "Click on Column Display Summary of all columns / Sort By column",
    "Right Click on Column Header switch Mode  Sum  / Sort",
};

const char* const kHelpThai[] = {
    "กดตัวอักษรนำหน้า ของข้อความที่ต้องการหา",
    "กดซ้ำเมื่อต้องการหารายการอื่นต่อไป",
    "กด F2   หากต้องการค้นหารายการ (ค้นหาทั้งหมดใหม่ไม่สนใจการกรองใดๆ)",
    "กด F6   หากต้องการกรองรายการ (กรองได้หลายชั้น)",
    "กด F7   หากทราบตัวอักษรนำหน้า/บางส่วนของคำ มากกว่า 1 ตัว (เฉพาะช่วงข้อมูลที่แสดงเท่านั้น)",
    "กด F8   หากต้องการล๊อค/ยกเลิกการล๊อค คอลันม์ด้านซ้ายมือของ Cursor ช่วยให้มองเห็นได้ขณะเลื่อนรายการไปด้านขวา",
    "กด Space bar เพื่อเลือก หรือยกเลิกการเลือก (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ)",
    "Double Click เพื่อเลือก หรือยกเลิกการเลือก (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ)",
    "กด Ctrl+A   หากต้องการเลือกทั้งหมด (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ)",
    "กด Ctrl+C   หากต้องการ Copy ข้อความใน ตำแหน่งที่ Cursor อยู่",
    "กด Ctrl+Z   หากต้องการยกเลิกรายการที่เลือกทั้งหมด (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ)",
    "Drag Cell เพื่อดูยอด Sum ที่ Drag",
    "Click ที่ หัว Column เพื่อดูยอด Sum ทั้งหมด / จัดเรียงลำดับ",
    "Right Click ที่ หัว Column สลับ Mode  Sum  / Sort",
};

template <size_t N>
QString joinLines(const char* const (&lines)[N]) {
  QStringList out;
  for (const char* l : lines) out << QString::fromUtf8(l);
  return out.join(QStringLiteral("\r\n"));
}

}  // namespace

// ---- The bar ---------------------------------------------------------------------------------------------------------

void DataView::setUpToolBar() {
  struct B {
    const char* caption;
    const char* key;
    const char* image;
  };
  // The blanks pad the captions to a common width.
  static const B buttons[] = {
      {"Enter-Open", "Enter", "Select"},       {"F2-Search   ", "MSearch", "Search"},
      {"F3-New      ", "Add", "New"},          {"F4-Edit        ", "Edit", "Edit"},
      {"F5-Delete   ", "Delete", "Delete"},    {"F6-Filter     ", "Filter", "Filter"},
      {"F8-Freeze   ", "Freeze", "Freeze"},    {"F9-Print      ", "Print", "Print"},
      {"F10-Export ", "Export", "Print"},      {"F11-Open   ", "Open", "Edit"},
      {"F12-Close   ", "Cancel", "Cancel"},
  };
  for (const B& b : buttons)
    TbrButton.AddButton(QString::fromUtf8(b.key), QString::fromUtf8(b.caption), QString::fromUtf8(b.image));
  TbrButton.Buttons(QStringLiteral("Freeze")).ToolTipText = QString::fromUtf8("ค้นหารายละเอียดในเอกสาร");
  ImlIcon = {QStringLiteral("Help"),   QStringLiteral("Modify"), QStringLiteral("Select"), QStringLiteral("Search"),
             QStringLiteral("Edit"),   QStringLiteral("New"),    QStringLiteral("Delete"), QStringLiteral("Update"),
             QStringLiteral("Print"),  QStringLiteral("Back"),   QStringLiteral("Cancel"), QStringLiteral("Filter"),
             QStringLiteral("Freeze")};
  TbrButton.onButtonClick = [this](const QString& key) { TbrButton_ButtonClick(key); };
}

// A click needs no check of its own: a hidden or disabled button cannot be clicked.
void DataView::TbrButton_ButtonClick(const QString& key) {
  if (key == u"Enter") cmdSelect_Click();
  else if (key == u"Open") cmdOpen_Click();
  else if (key == u"Add") cmdAdd_Click();
  else if (key == u"Edit") cmdEdit_Click();
  else if (key == u"Delete") cmdDelete_Click();
  else if (key == u"Filter") FilterTool();
  else if (key == u"MSearch") SearchTool();
  else if (key == u"Cancel") cmdCancel_Click();
  else if (key == u"Print") cmdPrint_Click();
  else if (key == u"Export") cmdExport_Click();
  else if (key == u"Freeze") cmdFreeze_Click();
}

bool DataView::buttonReady(const QString& key) {
  bool ready = false;
  step([&] {
    const ToolButton& b = TbrButton.Buttons(key);
    ready = b.Enabled && b.Visible;
  });
  return ready;
}

void DataView::setbuttons(bool bval) {
  if (!bval) {
    for (const ToolButton& b : TbrButton.ButtonList()) step([&] { TbrButton.setButtonVisible(b.Key, false); });
    // This bar has no "Close"; the failure is passed over and the bar stays empty.
    step([&] { TbrButton.setButtonVisible(QStringLiteral("Close"), true); });
  } else {
    for (const ToolButton& b : TbrButton.ButtonList()) step([&] { TbrButton.setButtonVisible(b.Key, true); });
    step([&] { TbrButton.setButtonVisible(QStringLiteral("Export"), false); });
  }
  int32_t total = 0;
  step([&] { total = rsid_ ? rsid_->RecordCount() : 0; });
  if (dataLoaded_ && total >= 1) {
    step([&] { TbrButton.setButtonEnabled(QStringLiteral("Enter"), true); });
    step([&] { TbrButton.setButtonEnabled(QStringLiteral("Filter"), true); });
    if (deleteShown_) {
      step([&] { TbrButton.setButtonEnabled(QStringLiteral("Delete"), true); });
      step([&] { TbrButton.setButtonVisible(QStringLiteral("Delete"), true); });
    }
    if (printShown_) {
      step([&] { TbrButton.setButtonEnabled(QStringLiteral("Print"), true); });
      step([&] { TbrButton.setButtonVisible(QStringLiteral("Print"), true); });
    }
    if (searchShown_) {
      step([&] { TbrButton.setButtonEnabled(QStringLiteral("MSearch"), true); });
      step([&] { TbrButton.setButtonVisible(QStringLiteral("MSearch"), true); });
    }
  } else {
    step([&] { TbrButton.setButtonEnabled(QStringLiteral("Enter"), false); });
    step([&] { TbrButton.setButtonEnabled(QStringLiteral("Filter"), true); });
  }
  for (const ToolButton& b : TbrButton.ButtonList())
    if (!b.Enabled) step([&] { TbrButton.setButtonVisible(b.Key, false); });
  mfgData.setEnabled(true);
  if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
}

void DataView::SetButonStatus(bool AddEnable, bool AddVisible, bool EditEnable, bool EditVisible, bool DeleteEnable,
                              bool DeleteVisible, bool PrintEnable, bool PrintVisible) {
  const struct {
    const char* key;
    bool enable, visible;
  } set[] = {{"Add", AddEnable, AddVisible},
             {"Edit", EditEnable, EditVisible},
             {"Delete", DeleteEnable, DeleteVisible},
             {"Print", PrintEnable, PrintVisible},
             {"Open", false, false}};
  for (const auto& s : set) {
    step([&] { TbrButton.setButtonEnabled(QString::fromUtf8(s.key), s.enable); });
    step([&] { TbrButton.setButtonVisible(QString::fromUtf8(s.key), s.visible); });
  }
}

void DataView::SetButonStatus2(bool AddEnable, bool AddVisible, bool EditEnable, bool EditVisible, bool DeleteEnable,
                               bool DeleteVisible, bool PrintEnable, bool PrintVisible, bool SearchEnable,
                               bool SearchVisible, bool FilterEnable, bool FreezeVisible, bool FreezeEnable,
                               bool FilterVisible, bool CloseEnable, bool CloseVisible, bool SelectEnable,
                               bool SelectVisible, bool OpenEnable, bool OpenVisible) {
  // FilterVisible and FreezeVisible stand crossed in the argument list; each goes to its own button.
  const struct {
    const char* key;
    bool enable, visible;
  } set[] = {{"Add", AddEnable, AddVisible},          {"Edit", EditEnable, EditVisible},
             {"Delete", DeleteEnable, DeleteVisible}, {"Print", PrintEnable, PrintVisible},
             {"MSearch", SearchEnable, SearchVisible}, {"Filter", FilterEnable, FilterVisible},
             {"Freeze", FreezeEnable, FreezeVisible}, {"Cancel", CloseEnable, CloseVisible},
             {"Enter", SelectEnable, SelectVisible},   {"Open", OpenEnable, OpenVisible}};
  for (const auto& s : set) {
    step([&] { TbrButton.setButtonEnabled(QString::fromUtf8(s.key), s.enable); });
    step([&] { TbrButton.setButtonVisible(QString::fromUtf8(s.key), s.visible); });
  }
  deleteShown_ = DeleteVisible;
  printShown_ = PrintVisible;
  searchShown_ = SearchVisible;
}

void DataView::SetButtonLabel(const QString& AddLabel, const QImage& AddIcon, const QString& PrintLabel,
                              const QImage& PrintIcon, const QString& EditLabel, const QImage& EditIcon,
                              const QString& DeleteLabel, const QImage& DeleteIcon) {
  if (DoIcon) return;  // works once
  const struct {
    const char* key;
    const QString& label;
    const QImage& icon;
    const char* iconKey;
  } set[] = {{"Add", AddLabel, AddIcon, "AddIcon"},
             {"Print", PrintLabel, PrintIcon, "PrintIcon"},
             {"Edit", EditLabel, EditIcon, "EditIcon"},
             {"Delete", DeleteLabel, DeleteIcon, "DeleteIcon"}};
  for (const auto& s : set) {
    const QString key = QString::fromUtf8(s.key);
    if (!s.label.isEmpty()) step([&] { TbrButton.setButtonCaption(key, s.label); });
    if (!s.icon.isNull()) {
      step([&] {
        const QString iconKey = QString::fromUtf8(s.iconKey);
        if (ImlIcon.contains(iconKey))
          throw Error{err::InvalidProcedureCall, QStringLiteral("Key is not unique in collection")};
        ImlIcon << iconKey;
        ImlIconPictures.insert(iconKey, s.icon);
        TbrButton.Buttons(key).Image = iconKey;
        TbrButton.setButtonCaption(key, TbrButton.Buttons(key).Caption);  // tells the host of the new picture
      });
    }
  }
  DoIcon = true;
}

void DataView::SetButtonOpenCaption(const QString& iLabel) {
  step([&] { TbrButton.setButtonCaption(QStringLiteral("Enter"), iLabel); });
}

// ---- Commands -------------------------------------------------------------------------------------------------------

void DataView::cmdAdd_Click() {
  iActionCommandID = -1;
  GetSelect();
  raise(&DataViewEvents::AddCommandClick);
}

void DataView::cmdEdit_Click() {
  iActionCommandID = -2;
  GetSelect();
  raise(&DataViewEvents::EditCommandClick);
}

void DataView::cmdDelete_Click() {
  iActionCommandID = -3;
  GetSelect();
  raise(&DataViewEvents::DeleteCommandClick);
}

void DataView::cmdPrint_Click() {
  iActionCommandID = -5;
  raise(&DataViewEvents::PrintCommandClick);
}

void DataView::cmdExport_Click() {
  iActionCommandID = -6;
  raise(&DataViewEvents::ExportCommandClick);
}

void DataView::cmdCancel_Click() {
  iActionCommandID = 0;
  raise(&DataViewEvents::CancelCommandClick);
}

void DataView::cmdOpen_Click() {
  iActionCommandID = 0;
  GetSelect();
  raise(&DataViewEvents::OpenCommandClick);
}

void DataView::cmdSelect_Click() {
  iActionCommandID = 0;
  GetSelect();
  if (!TextResult.isEmpty() || EnbleNoneSelectEvent) raise(&DataViewEvents::SelectCommandClick);
}

void DataView::cmdFreeze_Click() {
  SpreadSurface& s = mfgData;
  const int32_t col = s.ActiveCol(), row = s.ActiveRow();
  step([&] { s.setColsFrozen(s.ColsFrozen() == 0 ? col : 0); });
  step([&] { s.SetActiveCell(col, row); });
}

void DataView::ShowHelp() {
  const bool english = LanguageID() != 0;
  platform().infoBox(english ? joinLines(kHelpEnglish) : joinLines(kHelpThai),
                     msg("แนะนำวิธีใช้เครื่องมือค้นหา", "Help for more usage"));
  step([&] { mfgData.SetFocus(); });
}

// ---- Keys ------------------------------------------------------------------------------------------------------------

void DataView::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  switch (KeyCode) {
    case key::Return: cmdSelect_Click(); break;
    case key::F1: ShowHelp(); break;
    case key::F2:
      if (iFilterCommandID != 0) SearchTool();
      break;
    case key::F3:
      if (buttonReady(QStringLiteral("Add"))) cmdAdd_Click();
      break;
    case key::F4:
      if (buttonReady(QStringLiteral("Edit"))) cmdEdit_Click();
      break;
    case key::F5:
      if (buttonReady(QStringLiteral("Delete"))) cmdDelete_Click();
      break;
    case key::F6:
      if (iFilterCommandID != 0) FilterTool();
      break;
    case key::F7:
      step([&] {
        SpreadSurface& s = mfgData;
        const int32_t row = dbHelper().FindRow(s, s.ActiveRow(), s.ActiveCol(), QString(), 10, 1);
        s.SetActiveCell(s.ActiveCol(), row);
      });
      break;
    case key::F8: cmdFreeze_Click(); break;
    case key::F9:
      if (buttonReady(QStringLiteral("Print"))) cmdPrint_Click();
      break;
    case key::F12: cmdCancel_Click(); break;
    case key::Escape:
      if (EscapeAction) cmdCancel_Click();
      break;
    case 'A':
      if (Shift == shift::Ctrl && SelectStatus && iMultiRowSelect) markAll(true);
      break;
    case 'Z':
      if (Shift == shift::Ctrl && SelectStatus && iMultiRowSelect) markAll(false);
      break;
    default: break;
  }
}

// ---- The filter and the search tools ------------------------------------------------------------------------------

void DataView::FilterTool() { runTool(false); }

void DataView::SearchTool() { runTool(true); }

void DataView::runTool(bool search) {
  if (search) {
    if (xFieldList.isEmpty()) xFieldList = iFieldList;
    if (xFieldLabelList.isEmpty()) xFieldLabelList = iFieldLabelList;
    if (xFieldTypeList.isEmpty()) xFieldTypeList = iFieldTypeList;
    if (xTableName.isEmpty()) xTableName = iTableName;
  }
  QString result;
  {
    FilterData form;
    form.Form_Load();
    if (search) {
      form.cmdReset.setVisible(false);
      form.setCaption(QStringLiteral("Search Data Tool (Without Top Filter Effect)"));
      form.setLists(xFieldList, xFieldLabelList, xFieldTypeList);
    } else {
      form.cmdReset.setVisible(true);
      form.setCaption(QStringLiteral("Filter Data Tool"));
      form.setLists(iFieldList, iFieldLabelList, iFieldTypeList);
    }
    if (mfgData.ActiveCol() >= 1) form.DefaultIndex = mfgData.ActiveCol() - 1;
    form.Show();
    form.Form_Activate();
    platform().showModal(form);
    result = form.txtResult.Text();
    form.Form_Unload();
  }
  if (result.isEmpty()) return;
  if (search) {
    selectText_ = QStringLiteral("SELECT ") + xFieldList + QStringLiteral(" FROM ") +
                  viewsql::injectCondition(xTableName, result);
  } else if (result == u"RESET") {
    selectText_ = QStringLiteral("SELECT ") + iFieldList + QStringLiteral(" FROM ") + iTableName;
  } else {
    // Always from the view's own table: a second filter replaces the first.
    selectText_ = QStringLiteral("SELECT ") + iFieldList + QStringLiteral(" FROM ") +
                  viewsql::injectCondition(iTableName, result);
  }
  openQuery();
  setbuttons(true);
}

}  // namespace tq7
