// The colour legend and the help box of F1, on real SQLite files and the fake platform.
#include "companion/db/Connection.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"
#include "grid/editor/frmLegend.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

const char* const kEnglishEdit[] = {
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
const char* const kEnglishView[] = {
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
const char* const kThaiEdit[] = {
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
const char* const kThaiView[] = {
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
QString box(const char* const (&lines)[N], const char* title) {
  QStringList out;
  for (const char* l : lines) out << QString::fromUtf8(l);
  return QStringLiteral("infoBox: ") + out.join(QStringLiteral("\r\n")) + QStringLiteral(" | ") +
         QString::fromUtf8(title);
}

// What the legend form held while it was on the screen.
struct Seen {
  QString legendText, caption;
  bool shown = false;
  std::vector<bool> boxShown, labelShown;
  std::vector<Colour> colour;
  QStringList captions;
};

struct Legend : ::testing::Test {
  QTemporaryDir dir;
  QString data, appArg, appKept;
  FakePlatform fake;
  GridEditor g;
  std::vector<Seen> seen;

  QString makeDb(const char* file, const QStringList& statements) {
    {
      QFile f(dir.filePath(file));  // the provider opens only a file that exists
      EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    }
    const QString conn = QStringLiteral("Data Source=") + dir.filePath(file);
    db::Connection c;
    c.Open(conn);
    for (const QString& s : statements) c.Execute(s);
    c.Close();
    return conn;
  }

  void SetUp() override {
    ASSERT_TRUE(dir.isValid());
    // The colours are read from the data connection only; each database names its texts apart.
    data = makeDb("data.db", {"CREATE TABLE TQ7TSystem (TSysName TEXT, TSysValue REAL)",
                              "INSERT INTO TQ7TSystem VALUES ('ColPaid', 65280)",
                              "INSERT INTO TQ7TSystem VALUES ('ColLate', 33023.5)",
                              "INSERT INTO TQ7TSystem VALUES ('ColVoid', 255)",
                              "CREATE TABLE Tq7TOption (TOptName TEXT, TOptAlias TEXT)",
                              "INSERT INTO Tq7TOption VALUES ('ColPaid', 'from data')",
                              "CREATE TABLE TQ7TSystemUser (TSyUName TEXT, TSyUUserID INTEGER, TSyUValue REAL)",
                              "INSERT INTO TQ7TSystemUser VALUES ('LanguageID', 2, 1)"});
    appArg = makeDb("arg.db", {"CREATE TABLE Tq7TOption (TOptName TEXT, TOptAlias TEXT)",
                               QString::fromUtf8("INSERT INTO Tq7TOption VALUES ('ColPaid', 'จ่ายแล้ว')"),
                               "INSERT INTO Tq7TOption VALUES ('ColLate', 'Late')"});
    appKept = makeDb("kept.db", {"CREATE TABLE Tq7TOption (TOptName TEXT, TOptAlias TEXT)",
                                 "INSERT INTO Tq7TOption VALUES ('ColPaid', 'Paid (kept)')"});
    fake.onShowModal = [this](Form& form) {
      auto* legend = dynamic_cast<frmLegend*>(&form);
      ASSERT_NE(legend, nullptr);
      Seen s;
      s.legendText = legend->LegendText;
      s.caption = legend->Caption();
      s.shown = legend->Visible();
      for (int i = 0; i < frmLegend::Entries; ++i) {
        s.boxShown.push_back(legend->Picture1(i).Visible());
        s.labelShown.push_back(legend->Label1(i).Visible());
        s.colour.push_back(legend->Picture1(i).BackColor());
        s.captions << legend->Label1(i).Caption();
      }
      seen.push_back(s);
      legend->Command1.Click();
      EXPECT_FALSE(legend->Visible());
    };
  }
};

}  // namespace

TEST_F(Legend, EmptyArgumentsChangeNothingAndNoLegendSaysSo) {
  EXPECT_FALSE(g.cmdLegend.Visible());
  EXPECT_EQ(g.SetLegend("", data, appArg), 0);
  EXPECT_EQ(g.SetLegend("ColPaid", "", appArg), 0);
  EXPECT_EQ(g.SetLegend("ColPaid", data, ""), 0);
  EXPECT_FALSE(g.cmdLegend.Visible());
  g.cmdLegend.Click();
  EXPECT_EQ(fake.calls, QStringList{"messageBox: No Color Legend"});
  EXPECT_TRUE(seen.empty());

  // A legend once set survives a later call that is refused.
  ASSERT_EQ(g.SetLegend("ColVoid", data, appArg), 1);
  EXPECT_EQ(g.SetLegend("ColPaid", data, ""), 0);
  EXPECT_TRUE(g.cmdLegend.Visible());
  g.cmdLegend.Click();
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].legendText, "255;");
}

TEST_F(Legend, EntriesJoinColourAndTextAndTheFormShowsThem) {
  // A name with no setting is black, one with no option has no text; both still count.
  ASSERT_EQ(g.SetLegend("ColPaid,ColLate,ColNone", data, appArg), 1);
  EXPECT_TRUE(g.cmdLegend.Visible());
  g.cmdLegend.Click();
  ASSERT_EQ(seen.size(), 1u);
  const Seen& s = seen[0];
  EXPECT_EQ(fake.calls, QStringList{"showModal: frmLegend"});
  EXPECT_EQ(s.caption, "Color Legend");
  EXPECT_TRUE(s.shown);
  EXPECT_EQ(s.legendText, QString::fromUtf8("65280;จ่ายแล้ว,33023.5;Late,0;"));
  EXPECT_EQ(s.boxShown, (std::vector<bool>{true, true, true, false, false, false, false}));
  EXPECT_EQ(s.labelShown, s.boxShown);
  EXPECT_EQ(s.colour[0], 0x00FF00u);
  EXPECT_EQ(s.colour[1], 33024u);  // the colour as a whole number, the half to even
  EXPECT_EQ(s.colour[2], 0u);
  EXPECT_EQ(s.captions.mid(0, 4), (QStringList{QString::fromUtf8("จ่ายแล้ว"), "Late", "", ""}));
}

TEST_F(Legend, TextsComeFromTheApplicationConnectionSetLast3Kept) {
  g.SetLast3(dir.path(), "grdLegend", "1", {}, appKept);
  ASSERT_EQ(g.SetLegend("ColPaid,ColLate", data, appArg), 1);
  // SetLast3 without an application connection leaves the argument to speak.
  g.SetLast3(dir.path(), "grdLegend", "1", {}, {});
  ASSERT_EQ(g.SetLegend("ColPaid,ColLate", data, appArg), 1);
  g.SetLast3(dir.path(), "grdLegend", "1", {}, appKept);
  g.cmdLegend.Click();
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].legendText, QString::fromUtf8("65280;จ่ายแล้ว,33023.5;Late"));  // built, not re-read
  ASSERT_EQ(g.SetLegend("ColPaid,ColLate", data, appArg), 1);
  g.cmdLegend.Click();
  EXPECT_EQ(seen.back().legendText, "65280;Paid (kept),33023.5;");
}

TEST_F(Legend, EightEntriesShowSeven) {
  ASSERT_EQ(g.SetLegend("ColVoid,ColPaid,ColVoid,ColPaid,ColVoid,ColPaid,ColLate,ColPaid", data, appArg), 1);
  g.cmdLegend.Click();
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].legendText.count(','), 7);
  EXPECT_EQ(seen[0].boxShown, std::vector<bool>(7, true));
  EXPECT_EQ(seen[0].labelShown, std::vector<bool>(7, true));
  EXPECT_EQ(seen[0].captions[6], "Late");
  EXPECT_EQ(seen[0].colour[6], 33024u);
}

TEST(LegendForm, LoadsEachEntryLineByLine) {
  frmLegend empty;
  empty.Form_Load();
  for (int i = 0; i < frmLegend::Entries; ++i) EXPECT_FALSE(empty.Picture1(i).Visible() || empty.Label1(i).Visible());

  // An entry whose colour does not read is still shown; one without a text shows an empty label.
  frmLegend f;
  EXPECT_EQ(f.Frame1.Caption(), "   Color - Description");
  EXPECT_EQ(f.Command1.Caption(), "Close");
  f.LegendText = "255;Red,abc;Bad,65280";
  f.Form_Load();
  EXPECT_EQ(f.Picture1(0).BackColor(), 255u);
  EXPECT_TRUE(f.Picture1(1).Visible());
  EXPECT_EQ(f.Picture1(1).BackColor(), frmLegend().Picture1(1).BackColor());
  EXPECT_EQ(f.Label1(1).Caption(), "Bad");
  EXPECT_EQ(f.Picture1(2).BackColor(), 65280u);
  EXPECT_TRUE(f.Label1(2).Visible());
  EXPECT_EQ(f.Label1(2).Caption(), "");
  EXPECT_FALSE(f.Picture1(3).Visible());
  // Laid out top to bottom, the boxes left of their labels and the button below them all.
  EXPECT_LT(f.Picture1(0).Left() + f.Picture1(0).Width(), f.Label1(0).Left());
  EXPECT_GT(f.Picture1(6).Top(), f.Picture1(5).Top());
  EXPECT_GT(f.Command1.Top(), f.Picture1(6).Top() + f.Picture1(6).Height());
  EXPECT_LT(f.Command1.Top() + f.Command1.Height(), f.Height());
  f.Show();
  f.Command1.Click();
  EXPECT_FALSE(f.Visible());
}

TEST_F(Legend, HelpBoxByLanguageAndModeThenTheSurfaceHasTheFocus) {
  // Before SetLast3 the grid speaks Thai.
  EXPECT_EQ(g.focusedChild(), nullptr);
  g.ShowHelp();
  g.setEditStatus(true);
  g.ShowHelp();
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
  g.SetLast3(dir.path(), "grdHelp", "2", data, appArg);
  ASSERT_NE(g.LanguageID(), 0);
  g.setFocusTo(&g.cmdOption);
  g.ShowHelp();
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
  g.setEditStatus(false);
  g.ShowHelp();
  ASSERT_EQ(fake.count("infoBox: "), 4);
  QStringList boxes;
  for (const QString& c : fake.calls)
    if (c.startsWith("infoBox: ")) boxes << c;
  EXPECT_EQ(boxes[0], box(kThaiView, "แนะนำวิธีใช้เครื่องมือค้นหา"));
  EXPECT_EQ(boxes[1], box(kThaiEdit, "แนะนำวิธีใช้เครื่องมือค้นหา"));
  EXPECT_EQ(boxes[2], box(kEnglishEdit, "Help for more usage"));
  EXPECT_EQ(boxes[3], box(kEnglishView, "Help for more usage"));
  EXPECT_EQ(g.mfgData.ToolTipText(), "Press F1 for Help");
}

TEST_F(Legend, HelpFollowsEditStatusEvenBeforeSetbuttonsRuns) {
  PropertyBag bag;
  bag.WriteProperty("EditStatus", true);
  g.ReadProperties(bag);
  ASSERT_EQ(g.RUNMODE, "");
  g.ShowHelp();
  ASSERT_EQ(fake.count("infoBox: "), 1);
  EXPECT_TRUE(fake.calls.last().startsWith("infoBox: [EDIT MODE]\r\n"));
}
