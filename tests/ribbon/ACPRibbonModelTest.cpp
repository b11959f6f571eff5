// The ribbon's lists, skins and properties, through the public API with the fake platform.
#include "ribbon/ACPRibbon.h"

#include "frame/FakePlatform.h"

#include <QDir>
#include <cerrno>
#include <cstring>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

QImage solid(int w, int h, QColor c) {
  QImage img(w, h, QImage::Format_ARGB32);
  img.fill(c);
  return img;
}

// The LRP files in a folder: a picture load leaves none behind.
int lrpFiles(const QString& folder) {
  return int(QDir(folder).entryList({QStringLiteral("LRP*")}, QDir::Files).size());
}

}  // namespace

TEST(ACPRibbonModel, TabsAndCategoriesFailPastTheirCapacityAndKeepTheRaisedCount) {
  FakePlatform fake;
  ACPRibbon r;
  EXPECT_TRUE(r.CurrentTab().isEmpty());
  QString caption = QStringLiteral("ขาย\r\nSales");
  EXPECT_FALSE(r.AddTab(QStringLiteral("T1"), caption));
  EXPECT_EQ(caption, QStringLiteral("ขาย Sales"));  // the caller's own string is changed
  EXPECT_EQ(r.TabCaption(0), QStringLiteral("ขาย Sales"));
  EXPECT_EQ(r.CurrentTab(), QStringLiteral("T1"));
  EXPECT_FALSE(r.AddTab(QStringLiteral("T2"), QStringLiteral("คลัง")));
  EXPECT_EQ(r.CurrentTab(), QStringLiteral("T1"));  // only the first tab becomes current
  for (int i = 3; i <= 31; ++i) r.AddTab(QStringLiteral("T%1").arg(i), QStringLiteral("Tab %1").arg(i));
  EXPECT_EQ(r.TotalTab(), 31);
  try {
    r.AddTab(QStringLiteral("T32"), QStringLiteral("one too many"));
    ADD_FAILURE() << "a 32nd tab must fail";
  } catch (const Error& e) {
    EXPECT_EQ(e.number, 9);
  }
  EXPECT_EQ(r.TotalTab(), 32);
  EXPECT_THROW(r.AddTab(QStringLiteral("T33"), QStringLiteral("x")), Error);
  EXPECT_EQ(r.TotalTab(), 33);

  QString cat = QStringLiteral("ใบกำกับ\r\nภาษี");
  EXPECT_FALSE(r.AddCat(QStringLiteral("C1"), QStringLiteral("T1"), cat, true));
  EXPECT_EQ(cat, QStringLiteral("ใบกำกับ ภาษี"));
  EXPECT_EQ(r.CatTab(0), QStringLiteral("T1"));
  EXPECT_TRUE(r.CatDlg(0));
  for (int i = 2; i <= 31; ++i) r.AddCat(QStringLiteral("C%1").arg(i), QStringLiteral("T1"), QStringLiteral("c"), false);
  EXPECT_THROW(r.AddCat(QStringLiteral("C32"), QStringLiteral("T1"), QStringLiteral("c"), false), Error);
  EXPECT_EQ(r.TotalCat(), 32);
  EXPECT_TRUE(r.CatID(31).isEmpty());
}

TEST(ACPRibbonModel, ButtonsKeepTheirLineBreaksAndTheNinetySecondIsDroppedSilently) {
  FakePlatform fake;
  ACPRibbon r;
  auto list = std::make_shared<ImageList>();
  list->ListImages().Add(solid(32, 32, Qt::red));
  list->ListImages().Add(solid(16, 16, Qt::blue), QStringLiteral("small"));
  r.setImageList(list);

  QString two = QStringLiteral("ใบสั่ง\r\nซื้อ");
  EXPECT_FALSE(r.AddButton(QStringLiteral("B1"), QStringLiteral("C1"), two, 2));
  EXPECT_EQ(r.ButCaption(0), QStringLiteral("ใบสั่ง\r\nซื้อ"));  // two lines on the button
  EXPECT_EQ(r.ButToolTip(0), QStringLiteral("ใบสั่ง ซื้อ"));      // a blank in the tool tip
  EXPECT_EQ(two, QStringLiteral("ใบสั่ง ซื้อ"));                 // and in the caller's string
  EXPECT_EQ(r.ButPicture(0).size(), QSize(16, 16));             // counted from 1
  EXPECT_FALSE(r.ButMore(0));

  QString keep = QStringLiteral("Print\r\nAll");
  r.AddButton(QStringLiteral("B2"), QStringLiteral("C1"), keep, 1, true, QStringLiteral("Print\r\nevery page"));
  EXPECT_EQ(keep, QStringLiteral("Print\r\nAll"));  // a tool tip of its own spares the caption
  EXPECT_EQ(r.ButToolTip(1), QStringLiteral("Print every page"));
  EXPECT_TRUE(r.ButMore(1));

  // A picture index that is not in the list, and a control without a list: no picture, still added.
  r.AddButton(QStringLiteral("B3"), QStringLiteral("C1"), QStringLiteral("x"), 7);
  EXPECT_TRUE(r.ButPicture(2).isNull());
  EXPECT_EQ(r.ButID(2), QStringLiteral("B3"));
  ACPRibbon bare;
  bare.AddButton(QStringLiteral("B1"), QStringLiteral("C1"), QStringLiteral("x"), 1, true);
  EXPECT_EQ(bare.TotalButton(), 1);
  EXPECT_TRUE(bare.ButPicture(0).isNull());
  EXPECT_TRUE(bare.ButMore(0));  // the statements after the failed picture still ran

  for (int i = 4; i <= 91; ++i) r.AddButton(QStringLiteral("B%1").arg(i), QStringLiteral("C1"), QStringLiteral("b"), 1);
  EXPECT_EQ(r.TotalButton(), 91);
  QString extra = QStringLiteral("เกิน\r\nไป");
  EXPECT_NO_THROW(r.AddButton(QStringLiteral("B92"), QStringLiteral("C1"), extra, 1));
  EXPECT_EQ(r.TotalButton(), 92);
  EXPECT_EQ(extra, QStringLiteral("เกิน ไป"));  // the caller's caption is still changed
  EXPECT_EQ(r.ButID(90), QStringLiteral("B91"));
  EXPECT_TRUE(r.ButID(91).isEmpty());
}

TEST(ACPRibbonModel, MarkAndResetToMarkLeaveTheEntriesAboveTheMarkUntilOverwritten) {
  FakePlatform fake;
  ACPRibbon r;
  EXPECT_EQ(r.ResetToMark(), 0);  // before any Mark
  r.AddButton(QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("a"), 0);
  r.AddButton(QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("b"), 0);
  EXPECT_EQ(r.Mark(), 2);
  EXPECT_EQ(r.MarkTotalButton, 2);
  for (const char* id : {"X", "Y", "Z"}) r.AddButton(QString::fromLatin1(id), QStringLiteral("C"), QStringLiteral("t"), 0);
  EXPECT_EQ(r.TotalButton(), 5);
  EXPECT_EQ(r.ResetToMark(), 2);
  EXPECT_EQ(r.TotalButton(), 2);
  EXPECT_EQ(r.ButID(2), QStringLiteral("X"));  // still there
  EXPECT_EQ(r.ButID(4), QStringLiteral("Z"));
  r.AddButton(QStringLiteral("N"), QStringLiteral("C"), QStringLiteral("n"), 0);
  EXPECT_EQ(r.ButID(2), QStringLiteral("N"));  // overwritten by the next add
  EXPECT_EQ(r.ButID(3), QStringLiteral("Y"));
  r.MarkTotalButton = 1;  // the application may write the mark itself
  EXPECT_EQ(r.ResetToMark(), 1);
}

TEST(ACPRibbonModel, ThemesSetTheirColoursAndPicturesAndOutOfRangeIsTheFirst) {
  FakePlatform fake;
  ACPRibbon r;
  EXPECT_EQ(r.Theme(), 0);
  EXPECT_EQ(r.BackColor(), 0x464646u);
  EXPECT_EQ(r.ForeColor(), 0xFFFFFFu);
  EXPECT_EQ(r.TabCaptionColorActive(), 0x000000u);
  EXPECT_EQ(r.piece(Piece::Button_Caption, 0)->ForeColor, 0x80000008u);
  const QImage blackStrip = r.piece(Piece::Barra2, 0)->Picture;
  ASSERT_EQ(blackStrip.size(), QSize(11, 142));

  r.setTheme(1);
  EXPECT_EQ(r.Theme(), 1);
  EXPECT_EQ(r.BackColor(), 0xDAB08Eu);
  EXPECT_EQ(r.TabCaptionColor(), 0x8B4215u);
  EXPECT_EQ(r.piece(Piece::Cat_Caption, 0)->ForeColor, 0xB86A3Eu);
  EXPECT_NE(r.piece(Piece::Barra2, 0)->Picture, blackStrip);

  r.setTheme(2);
  EXPECT_EQ(r.ForeColor(), 0x6A625Cu);
  EXPECT_EQ(r.BackColor(), 0xDDD4D0u);
  r.setTheme(3);
  EXPECT_EQ(r.Theme(), 0);
  EXPECT_EQ(r.BackColor(), 0x464646u);
  r.setTheme(-1);
  EXPECT_EQ(r.Theme(), 0);

  // Every picture at the size of the table, and its sharper twin at twice it.
  struct Size { Piece piece; int w, h; };
  const Size sizes[] = {{Piece::Barra2, 11, 142}, {Piece::BarraLeft, 7, 142}, {Piece::Cat_Dlg_over, 15, 14},
                        {Piece::Cat_Left_on, 4, 89}, {Piece::Cat_Center_off, 5, 89}, {Piece::Cat_Center_on, 4, 89},
                        {Piece::Tab_center, 18, 24}, {Piece::Tab_center_over, 37, 24}, {Piece::Glip_on, 5, 4},
                        {Piece::Button_center_over, 49, 66}, {Piece::Button_right, 3, 66}};
  for (int16_t theme : {0, 1, 2}) {
    r.setTheme(theme);
    for (const Size& s : sizes) {
      const RibbonPiece* p = r.piece(s.piece, 0);
      EXPECT_EQ(p->Picture.size(), QSize(s.w, s.h)) << pieceName(s.piece) << " theme " << theme;
      EXPECT_EQ(p->Picture2x.size(), QSize(2 * s.w, 2 * s.h)) << pieceName(s.piece);
      EXPECT_EQ(p->Picture2x.devicePixelRatio(), 2.0);
    }
  }
}

TEST(ACPRibbonModel, PersistedThemeIsReadWithoutTheSkinAndColoursAreWrittenOnly) {
  FakePlatform fake;
  ACPRibbon fresh;
  PropertyBag saved;
  fresh.WriteProperties(saved);
  EXPECT_EQ(saved.names(), (QStringList{"Theme", "ButtonCenter", "BackColor", "ForeColor"}));
  EXPECT_EQ(saved.ReadProperty(QStringLiteral("BackColor")).toUInt(), 4605510u);
  EXPECT_EQ(saved.ReadProperty(QStringLiteral("ForeColor")).toUInt(), 16777215u);
  EXPECT_FALSE(saved.ReadProperty(QStringLiteral("ButtonCenter")).toBool());

  PropertyBag bag;
  bag.WriteProperty(QStringLiteral("Theme"), 1);
  bag.WriteProperty(QStringLiteral("ButtonCenter"), true);
  bag.WriteProperty(QStringLiteral("BackColor"), 255u);
  bag.WriteProperty(QStringLiteral("ForeColor"), 0u);
  ACPRibbon r;
  const QImage strip = r.piece(Piece::Barra2, 0)->Picture;
  r.ReadProperties(PropertyBag::fromJson(bag.toJson()));
  EXPECT_EQ(r.Theme(), 1);
  EXPECT_TRUE(r.ButtonCenter().toBool());
  EXPECT_EQ(r.BackColor(), 0x464646u);  // the skin was not applied, the stored colours not read
  EXPECT_EQ(r.ForeColor(), 0xFFFFFFu);
  EXPECT_EQ(r.piece(Piece::Barra2, 0)->Picture, strip);
  PropertyBag again;
  r.WriteProperties(again);
  EXPECT_EQ(again.ReadProperty(QStringLiteral("Theme")).toInt(), 1);
  EXPECT_EQ(again.ReadProperty(QStringLiteral("BackColor")).toUInt(), 4605510u);

  const int before = r.PropertyChanges();
  r.setButtonCenter(QVariant(false));
  EXPECT_FALSE(r.ButtonCenter().toBool());
  EXPECT_EQ(r.PropertyChanges(), before + 1);
}

TEST(ACPRibbonModel, PictureLoadsLeaveNoFileAndNameTheirFailures) {
  FakePlatform fake;
  QTemporaryDir tmp;
  ASSERT_TRUE(tmp.isValid());
  const QByteArray oldTmp = qgetenv("TMPDIR");
  qputenv("TMPDIR", tmp.path().toLocal8Bit());
  ACPRibbon r;
  EXPECT_EQ(r.LoadBackground().size(), QSize(499, 157));
  r.setTheme(1);
  EXPECT_EQ(r.LoadBackground().size(), QSize(499, 157));
  r.setTheme(2);
  EXPECT_EQ(r.LoadBackground().size(), QSize(1, 1));
  EXPECT_EQ(lrpFiles(tmp.path()), 0);

  try {
    LoadSkinPicture(104, QStringLiteral("BLACK"));  // carried by no skin of ours
    ADD_FAILURE() << "a missing resource must fail";
  } catch (const RibbonPictureError& e) {
    EXPECT_EQ(e.number, 326);
    EXPECT_EQ(e.source, programName() + QStringLiteral(".cLoadResPicture"));
  }

  // No temporary folder: the system's code with 10000 added, named after the cursor loader.
  qputenv("TMPDIR", (tmp.path() + QStringLiteral("/gone")).toLocal8Bit());
  try {
    (void)r.LoadBackground();
    ADD_FAILURE() << "a missing temporary folder must fail";
  } catch (const RibbonPictureError& e) {
    EXPECT_EQ(e.number, ENOENT | 10000);
    EXPECT_EQ(e.source, programName() + QStringLiteral(".cAniCursor"));
    EXPECT_EQ(e.description, QString::fromLocal8Bit(std::strerror(ENOENT)));
  }
  // The skin's own loads are guarded one by one: the colours change, the pictures stay.
  const QImage strip = r.piece(Piece::Barra2, 0)->Picture;
  r.setTheme(0);
  EXPECT_EQ(r.BackColor(), 0x464646u);
  EXPECT_EQ(r.piece(Piece::Barra2, 0)->Picture, strip);
  if (oldTmp.isEmpty()) qunsetenv("TMPDIR"); else qputenv("TMPDIR", oldTmp);
}
