// Rotated labels, headless: the direction sign, the anchor grid, the font made for the drawing,
// the colours, and the text taken from a field of a data control on a real SQLite file.
#include "controls/RotLabel.h"
#include "controls/RotatedBoundControl.h"

#include "companion/db/Connection.h"
#include "frame/FakePlatform.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace tq7;

TEST(RotLabelTest, TheSignWrapsBothWaysAndTheAnchorFollowsTheGrid) {
  EXPECT_EQ(RotLabel::sign(0), 1);
  EXPECT_EQ(RotLabel::sign(90), 1);
  EXPECT_EQ(RotLabel::sign(91), -1);
  EXPECT_EQ(RotLabel::sign(180), -1);
  EXPECT_EQ(RotLabel::sign(270), -1);
  EXPECT_EQ(RotLabel::sign(271), 1);
  EXPECT_EQ(RotLabel::sign(-90), 1);
  EXPECT_EQ(RotLabel::sign(-91), -1);
  EXPECT_EQ(RotLabel::sign(-271), 1);

  FakePlatform fake;  // text width: characters x size x 12
  RotLabel l;
  l.setSize(3000, 1500);
  tq7::Font f;
  f.Size = 10;
  l.setFont(f);
  l.setCaption(QStringLiteral("ABCDE"));  // T = 600, F = 200
  EXPECT_EQ(l.Label1.Width(), 600);
  const RotatedText& d = l.lastDrawing();
  EXPECT_EQ(l.RotationPoint(), 5);
  EXPECT_DOUBLE_EQ(d.X, 1500 - 300);
  EXPECT_DOUBLE_EQ(d.Y, 750 - 100);
  // 180 degrees at the top right: the text runs leftwards from beyond the right edge.
  l.setAngle(180);
  l.setRotationPoint(3);
  EXPECT_DOUBLE_EQ(d.X, 3000 + 600);
  EXPECT_DOUBLE_EQ(d.Y, 0);
  l.setRotationPoint(9);
  EXPECT_DOUBLE_EQ(d.Y, 1500 + 200);
  l.setAngle(45);
  for (int16_t rp : {0, 7, 10, -3}) {
    l.setRotationPoint(rp);
    EXPECT_DOUBLE_EQ(d.X, 0);
    EXPECT_DOUBLE_EQ(d.Y, 1500 - 200);
  }
  l.setRotationPoint(1);
  EXPECT_DOUBLE_EQ(d.X, 0);
  EXPECT_DOUBLE_EQ(d.Y, 0);
  l.setRotationPoint(2);
  EXPECT_DOUBLE_EQ(d.X, 1200);
  l.setRotationPoint(4);
  EXPECT_DOUBLE_EQ(d.Y, 650);
  l.setRotationPoint(6);
  EXPECT_DOUBLE_EQ(d.X, 2400);
  l.setRotationPoint(8);
  EXPECT_DOUBLE_EQ(d.Y, 1300);
}

TEST(RotLabelTest, EachChangeRedrawsWithTheFontItNames) {
  FakePlatform fake;
  RotLabel l;
  EXPECT_EQ(l.Caption(), QStringLiteral("RotLabel"));
  EXPECT_FALSE(l.picMask.Visible());
  EXPECT_FALSE(l.Label1.Visible());
  const int before = l.drawCount();
  tq7::Font f;
  f.Name = QStringLiteral("Tahoma");
  f.Size = 12;
  f.Bold = true;
  f.Italic = true;
  l.setFont(f);
  l.setAngle(30);
  l.setCaption(QStringLiteral("ภาษาไทย"));
  l.setRotationPoint(2);
  l.setSize(900, 900);
  EXPECT_EQ(l.drawCount(), before + 5);
  const RotatedText& d = l.lastDrawing();
  EXPECT_EQ(d.caption, QStringLiteral("ภาษาไทย"));
  EXPECT_EQ(d.weight, 700);
  EXPECT_EQ(d.height, 16);  // 12 points, in pixels, rounded down
  EXPECT_FLOAT_EQ(d.angle, 30);
  EXPECT_TRUE(d.italic);
  EXPECT_EQ(d.fontName, QStringLiteral("Tahoma"));
  f.Bold = false;
  f.Size = 8.25;
  l.setFont(f);
  EXPECT_EQ(d.weight, 400);
  EXPECT_EQ(d.height, 11);

  // The fore colour is the surface's fore and back colour: what shows through the mask is text.
  l.setForeColor(rgb(200, 10, 10));
  EXPECT_EQ(l.SurfaceForeColor(), rgb(200, 10, 10));
  EXPECT_EQ(l.SurfaceBackColor(), rgb(200, 10, 10));

  PropertyBag bag;
  l.WriteProperties(bag);
  EXPECT_EQ(bag.names(), QStringList({"Angle", "Caption", "Font", "ForeColor", "RotationPoint"}));
  RotLabel m;
  m.ReadProperties(PropertyBag::fromJson(bag.toJson()));
  EXPECT_FLOAT_EQ(m.Angle(), 30);
  EXPECT_EQ(m.Caption(), QStringLiteral("ภาษาไทย"));
  EXPECT_EQ(m.Font(), f);
  EXPECT_EQ(m.SurfaceBackColor(), rgb(200, 10, 10));
  EXPECT_EQ(m.RotationPoint(), 2);
}

TEST(RotatedBoundControlTest, StartsAtTheBottomLeftAndFollowsTheFieldOfItsDataControl) {
  FakePlatform fake;
  QTemporaryDir dir;
  const QString file = dir.filePath(QStringLiteral("shop.db"));
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db,
                         "CREATE TABLE goods(code TEXT, name TEXT, price REAL);"
                         "INSERT INTO goods VALUES('A1','ข้าวสาร',45.5),('A2',NULL,12),('A3','น้ำปลา',30);",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  db::Connection cn;
  cn.Open(QStringLiteral("Data Source=") + file);
  db::Recordset rs;
  rs.Open(QStringLiteral("SELECT code, name, price FROM goods ORDER BY code"), cn);

  DataControl other(QStringLiteral("adoOther")), data(QStringLiteral("adoGoods")), twin(QStringLiteral("adoGoods"));
  data.setRecordset(&rs);
  std::vector<DataControl*> form{&other, &data, &twin};

  RotatedBoundControl c;
  c.setSize(2000, 1000);
  tq7::Font f;
  f.Size = 9;
  c.setFont(f);
  c.setAngle(90);
  EXPECT_DOUBLE_EQ(c.lastDrawing().X, 0);
  EXPECT_DOUBLE_EQ(c.lastDrawing().Y, 1000 - 180);
  c.setContainer(&form);
  c.setDataFieldName(QStringLiteral("name"));
  c.setDataControlName(QStringLiteral("adogoods"));  // names compare exactly
  EXPECT_EQ(c.m_DataControl(), nullptr);
  c.setDataControlName(QStringLiteral("adoGoods"));
  EXPECT_EQ(c.m_DataControl(), &data);  // the first of that name
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("ข้าวสาร"));
  EXPECT_EQ(c.lastDrawing().caption, QStringLiteral("ข้าวสาร"));
  // A null value, a bad field name, no current record: the caption stays.
  rs.MoveNext();
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("ข้าวสาร"));
  c.setDataFieldName(QStringLiteral("price"));
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("12"));
  c.setDataFieldName(QStringLiteral("no_such_field"));
  rs.MoveNext();
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("12"));
  c.setDataFieldName(QStringLiteral("code"));
  rs.MoveNext();  // past the end
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("12"));
  // An empty field name reads nothing.
  rs.MoveFirst();
  c.setDataFieldName(QString());
  data.Reposition();
  EXPECT_EQ(c.Caption(), QStringLiteral("12"));

  // Read back, the field comes first, so the search by name binds at once.
  c.setDataFieldName(QStringLiteral("code"));
  PropertyBag bag;
  c.WriteProperties(bag);
  RotatedBoundControl d;
  d.setContainer(&form);
  d.ReadProperties(bag);
  EXPECT_EQ(d.m_DataControl(), &data);
  data.Reposition();
  EXPECT_EQ(d.Caption(), QStringLiteral("A1"));
  EXPECT_FLOAT_EQ(d.Angle(), 90);
}
