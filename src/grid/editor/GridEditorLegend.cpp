// GridEditor: the colour legend (SetLegend, the legend button) and the help box of F1.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/SystemValues.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/editor/frmLegend.h"

#include <QStringList>

namespace tq7 {

namespace {

// The keys of each mode as the user reads them, line by line. The texts are the ones the users
// have always seen, spacing and spelling included.
const char* const kHelpEnglishEdit[] = {
    "[EDIT MODE]",
    "Press F2 or Double Click  for Select your item",
    "Press F3   for append record at last of list (and move cursor to new record)",
    "Press Shift+F3   for Insert record before Cursor record (and move cursor to new record)",
    "Press Ctrl+F3   for Insert record after Cursor record (and move cursor to new record)",
    "Press F4   for Multi line input",
    "Press F5   Remove record on cursor record",
    "Press F7   Find record with more than 1 charector input (only display in grid)",
    "Press F8   To Lock/Cancel Lock column on the left of Cursor",
    "Press F11   Move Cursor Record Up",
    "Press Shift+F11   Move Cursor Record to Top",
    "Press F12   Move Cursor Record Down",
    "Press Shift+F12   Move Cursor Record to Bottom",
    "Press Ctrl+C   Copy Data on Cursor position",
    "Press Ctrl+X   Cut Data on Cursor position",
    "Press Ctrl+V   Paste Data on Cursor position",
    "Drag Select Cell for Display Summary of Draged",
    "Click on Column Display Summary of all columns",
};

const char* const kHelpEnglishView[] = {
    "[VIEW / SELECT MODE]",
    "Press any charector for move to next record match that charector",
    "Press again to move next",
    "Press F4   for Display with Multi line",
    "Press F6   to Filter Display on Grid (Multi Level Support)",
    "Press F7   Find record with more than 1 charector input (only display in grid)",
    "Press F8   To Lock/Cancel Lock column on the left of Cursor",
    "Press Space bar for Select/De select (incase of Multi Select Enable [M] )",
    "Double Click for Select/De select (incase of Multi Select Enable [M] )",
    "Press Ctrl+A   Select All records (incase of Multi Select Enable [M] )",
    "Press Ctrl+C   Copy Data on Cursor position",
    "Press Ctrl+Z   DeSelect All records (incase of Multi Select Enable [M] )",
    "Drag Select Cell for Display Summary of Draged",
    "Click on Column Display Summary of all columns",
};

const char* const kHelpThaiEdit[] = {
    "[EDIT MODE]",
    "กด F2 หรือ Double Click  หากต้องการเลือกรายการ",
    "กด F3   หากต้องการเพิ่มรายการใหม่ด้านล่างสุด (พร้อมทั้งเลื่อน Cursor มาตำแหน่งพร้อมทำงาน)",
    "กด Shift+F3   หากต้องการแทรกรายการใหม่  ก่อนหน้าที่ Cursor วางอยู่ (พร้อมทั้งเลื่อน Cursor มาตำแหน่งพร้อมทำงาน)",
    "กด Ctrl+F3   หากต้องการแทรกรายการใหม่  ต่อท้ายที่ Cursor วางอยู่ (พร้อมทั้งเลื่อน Cursor มาตำแหน่งพร้อมทำงาน)",
    "กด F4   หากต้องการพิมพ์ข้อความที่สามารถ เว้นบรรทัดได้",
    "กด F5   หากต้องการลบรายการที่ Cursor วางอยู่",
    "กด F7   หากทราบตัวอักษรนำหน้า/บางส่วนของคำ มากกว่า 1 ตัว (เฉพาะช่วงข้อมูลที่แสดงเท่านั้น)",
    "กด F8   หากต้องการล๊อค/ยกเลิกการล๊อค คอลันม์ด้านซ้ายมือของ Cursor",
    "กด F11   หากต้องการเลื่อนรายการที่ Cursor วางอยู่ขึ้น",
    "กด Shift+F11   หากต้องการเลื่อนรายการที่ Cursor วางอยู่ไปบนสุด",
    "กด F12   หากต้องการเลื่อนรายการที่ Cursor วางอยู่ลง",
    "กด Shift+F12   หากต้องการเลื่อนรายการที่ Cursor วางอยู่ไปล่างสุด",
    "กด Ctrl+C   หากต้องการ Copy ข้อความใน ตำแหน่งที่ Cursor อยู่",
    "กด Ctrl+X   หากต้องการ Cut ข้อความใน ตำแหน่งที่ Cursor อยู่",
    "กด Ctrl+V   หากต้องการ Paste ข้อความใน ตำแหน่งที่ Cursor อยู่",
    "Drag Select Cell เพื่อดูยอด Sum ที่ Drag",
    "Click ที่ หัว Column เพื่อดูยอด Sum ทั้งหมด",
};

const char* const kHelpThaiView[] = {
    "[VIEW / SELECT MODE]",
    "กดตัวอักษรนำหน้า ของข้อความที่ต้องการหา",
    "กดซ้ำเมื่อต้องการหารายการอื่นต่อไป",
    "กด F4   หากต้องการดูข้อความที่พิมพ์ข้อความแบบเว้นบรรทัด",
    "กด F6   หากต้องการกรองรายการ (กรองได้หลายชั้น)",
    "กด F7   หากทราบตัวอักษรนำหน้า/บางส่วนของคำ มากกว่า 1 ตัว (เฉพาะช่วงข้อมูลที่แสดงเท่านั้น)",
    "กด F8   หากต้องการล๊อค/ยกเลิกการล๊อค คอลันม์ด้านซ้ายมือของ Cursor",
    "กด Space bar เพื่อเลือก หรือยกเลิกการเลือก (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ [M] )",
    "Double Click เพื่อเลือก หรือยกเลิกการเลือก (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ [M] )",
    "กด Ctrl+A   หากต้องการเลือกทั้งหมด (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ [M] )",
    "กด Ctrl+C   หากต้องการ Copy ข้อความใน ตำแหน่งที่ Cursor อยู่",
    "กด Ctrl+Z   หากต้องการยกเลิกรายการที่เลือกทั้งหมด (ในกรณีที่เป็นโหมดเลือกแบบหลายรายการ [M] )",
    "Drag Cell เพื่อดูยอด Sum ที่ Drag",
    "Click ที่ หัว Column เพื่อดูยอด Sum ทั้งหมด",
};

template <size_t N>
QString joinLines(const char* const (&lines)[N]) {
  QStringList out;
  out.reserve(qsizetype(N));
  for (const char* line : lines) out.append(QString::fromUtf8(line));
  return out.join(QStringLiteral("\r\n"));
}

}  // namespace

int16_t GridEditor::SetLegend(const QString& iLegendList, const QString& iDataConnectionString,
                              const QString& iAppConnectionString) {
  if (iLegendList.isEmpty() || iDataConnectionString.isEmpty() || iAppConnectionString.isEmpty()) return 0;
  legendList_.clear();
  // The texts live with the application's tables: the connection SetLast3 kept wins.
  const QString textConnection = appConnection_.isEmpty() ? iAppConnectionString : appConnection_;
  for (const QString& name : vb::Split(iLegendList, QStringLiteral(","))) {
    double colour = 0;  // a missing setting is black
    QString text;       // a failed look-up leaves the description empty
    step([&] { colour = GetSystemValue(name, iDataConnectionString); });
    step([&] {
      text = dbHelper().LookupValue(QString(), 0, 0, QStringLiteral("TOptAlias"), name, QStringLiteral("TOptName"),
                                    QStringLiteral("Tq7TOption"), textConnection);
    });
    if (!legendList_.isEmpty()) legendList_ += QLatin1Char(',');
    legendList_ += vb::shortestText(colour) + QLatin1Char(';') + text;
  }
  step([&] { cmdLegend.setVisible(true); });
  return 1;
}

void GridEditor::cmdLegend_Click() {
  if (legendList_.isEmpty()) {
    platform().messageBox(QStringLiteral("No Color Legend"));
    return;
  }
  // A fresh form each time: closing the legend unloads it.
  frmLegend form;
  form.LegendText = legendList_;
  form.Form_Load();
  platform().showModal(form);
}

void GridEditor::ShowHelp() {
  const bool english = LanguageID() != 0;
  QString text;
  if (editStatus_)
    text = english ? joinLines(kHelpEnglishEdit) : joinLines(kHelpThaiEdit);
  else
    text = english ? joinLines(kHelpEnglishView) : joinLines(kHelpThaiView);
  platform().infoBox(text, msg("แนะนำวิธีใช้เครื่องมือค้นหา", "Help for more usage"));
  step([&] { mfgData.SetFocus(); });
}

}  // namespace tq7
