// The field-type page: one column of each type the grid knows, grouped the way a form groups
// them, with one sample value in the input row so that every rendering shows.
#include "Pages.h"

#include "companion/VbText.h"
#include "host/GridEditorWidget.h"

#include <QLabel>
#include <QVBoxLayout>

namespace gallery {
namespace {

// The attributes the page varies; the rest are the declaration's defaults.
struct Column {
  int16_t column;
  const char* field;
  const char* type;
  const char* caption;
  int16_t canBlank;  // 1 optional; 0 required, shown with a bold caption
  int16_t width;     // twips; 0 hides the column
  int16_t rowAlign;  // flexAlign value for the cells
  const char* group1;
  const char* group2;
  int16_t displayDecimal = 0;
  const char* labels = "";
};

constexpr int16_t kLeftCenter = 1, kCenterCenter = 4, kRightCenter = 7;

// Group captions: the first level names a kind of value, the second the part of the form.
#define NUMBERS "ตัวเลข Numbers"
#define CHOICES "ข้อความและตัวเลือก Text and choices"
#define DATES "วันที่ Dates"
#define TIMES "เวลา Times"
#define MAIN "ข้อมูลหลัก Main data"
#define WHEN "วันและเวลา Date and time"

const Column kColumns[] = {
    // An AUTONUMBER column always shows with width 0: the running number is the row's own.
    {1, "RowNo", "AUTONUMBER", "ลำดับ No.", 1, 600, kRightCenter, "", ""},
    {2, "Amount", "NUMBER", "จำนวนเงิน Amount", 0, 1550, kRightCenter, NUMBERS, MAIN, 2},
    {3, "NetAmount", "ABSNUMBER", "ยอดสุทธิ Net", 1, 1200, kRightCenter, NUMBERS, MAIN, 2},
    {4, "TaxYear", "YEAR", "ปีภาษี Tax year", 1, 1200, kCenterCenter, NUMBERS, MAIN},
    {5, "Customer", "TEXT", "ชื่อลูกค้า Customer", 0, 2300, kLeftCenter, CHOICES, MAIN},
    {6, "Approved", "YESNO", "อนุมัติ Approved", 1, 1300, kCenterCenter, CHOICES, MAIN},
    {7, "Paid", "CHECK", "ชำระแล้ว Paid", 1, 1150, kCenterCenter, CHOICES, MAIN},
    {8, "PayType", "LABELLIST", "ชำระโดย Pay by", 0, 1350, kCenterCenter, CHOICES, MAIN, 0, "ส;สด,อ;โอน,บ;บัตร"},
    {9, "DocDate", "DATE", "วันที่ Date", 0, 1250, kCenterCenter, DATES, WHEN},
    {10, "Period", "PERIOD", "งวด Period", 1, 1050, kCenterCenter, DATES, WHEN},
    {11, "Recorded", "DATETIME", "บันทึกเมื่อ Recorded", 1, 1700, kCenterCenter, DATES, WHEN},
    {12, "StartTime", "TIME", "เวลา Time", 1, 1000, kCenterCenter, TIMES, WHEN},
    {13, "Hours", "HOUR", "ชั่วโมง Hours", 1, 1100, kRightCenter, TIMES, WHEN},
    {14, "Duration", "DAYTIME", "ระยะเวลา Span", 1, 1350, kCenterCenter, TIMES, WHEN},
    {15, "Colour", "COLOR", "สี Colour", 1, 1000, kCenterCenter, "อื่นๆ Other", ""},
    // Kept with the record, never shown.
    {16, "InternalNote", "TEXT", "บันทึกภายใน Internal", 1, 0, kLeftCenter, "อื่นๆ Other", ""},
};

QString u(const char* s) { return QString::fromUtf8(s); }

void declare(tq7::GridEditor& g) {
  g.SetFirst(16);
  for (const Column& c : kColumns) {
    g.addField3(c.column, u(c.field), u(c.type), /*PrimaryKey*/ 0, u(c.caption), c.displayDecimal,
                /*MinCon*/ QString(), 0, /*MaxCon*/ QString(), 0, /*MaxLength*/ 60, /*CanDuplicate*/ 1, c.canBlank,
                /*CanEdit*/ 1, /*CanDeleteAlias*/ 0, c.width, /*TitleAlign*/ 4, c.rowAlign, u(c.labels),
                /*DefaultValue*/ 0, /*DefaultText*/ QString(), /*ShellCommand*/ QString(), /*DisplayField*/ QString(),
                /*NumberOfDecimal*/ c.displayDecimal, /*ListWidth*/ 0, u(c.group1), u(c.group2));
  }
}

// One value of each type in the input row, as an application would put them there.
void fillSamples(tq7::GridEditor& g) {
  using tq7::vb::DateSerial;
  using tq7::vb::timeSerial;
  const int32_t r = g.LastRecord();
  g.SetValue(r, 2, 1234.5);
  g.SetValue(r, 3, 987.25);
  g.SetValue(r, 4, 2024);
  g.SetText(r, 5, QStringLiteral("บริษัท ข้าวทองการค้า จำกัด"));
  g.SetValue(r, 6, 1);
  g.SetValue(r, 7, 1);
  g.SetValue(r, 8, 1);  // the second label, "อ" (โอน)
  g.SetValue(r, 9, DateSerial(2024, 3, 15));
  g.SetValue(r, 10, DateSerial(2024, 3, 1));
  g.SetValue(r, 11, DateSerial(2024, 3, 15) + timeSerial(14, 30, 0));
  g.SetValue(r, 12, timeSerial(8, 45, 0));
  g.SetValue(r, 13, 7.30);  // seven hours thirty
  g.SetValue(r, 14, 1.5);   // a day and a half
  g.SetText(r, 16, QStringLiteral("ไม่แสดง not shown"));

  // A colour cell keeps its colour in the matrix and shows it as the cell's back colour, with
  // no text, as the colour dialog leaves it.
  const tq7::Colour orange = 0x0030A0F0u;  // 0x00BBGGRR
  g.SetValue(r, 15, orange);
  tq7::SpreadSurface& s = g.mfgData;
  const int32_t row = s.Row(), col = s.Col();
  s.setRow(g.Record2Row(r));
  s.setCol(g.Column2Col(15));
  s.setBackColor(orange);
  s.setRow(row);
  s.setCol(col);
  g.SetText(r, 15, QString());
}

}  // namespace

QWidget* makeFieldTypesPage(const QString& folder, QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* layout = new QVBoxLayout(page);
  auto* note = new QLabel(QStringLiteral(
      "คอลัมน์ละหนึ่งชนิดข้อมูล หัวคอลัมน์ตัวหนาคือช่องที่ต้องกรอก · One column of each field type; "
      "bold captions are required fields"));
  note->setWordWrap(true);
  layout->addWidget(note);

  auto* grid = new tq7::GridEditorWidget(page);
  grid->setObjectName(QStringLiteral("grdTypes"));
  layout->addWidget(grid, 1);

  tq7::GridEditor& g = grid->grid();
  declare(g);
  // No table behind this grid: it is a form to fill in, so no connection either.
  g.SetData(QStringLiteral("ชนิดข้อมูล"), QString(), QString(), QString(), QString(), 0, QString(), QString());
  g.SetLast3(folder, QStringLiteral("grdTypes"), QStringLiteral("1"), QString(), QString());
  g.setEditStatus(true);
  g.setEditStatusShowAddButton(true);
  g.setEditStatusShowInsertButton(true);
  g.setEditStatusShowRemoveButton(true);
  g.setEditStatusShowClearButton(true);
  g.setEditStatusShowMoveUpButton(true);
  g.setEditStatusShowMoveDownButton(true);
  fillSamples(g);
  return page;
}

}  // namespace gallery
