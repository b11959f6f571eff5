// The colour legend as a real window: opened by a mouse click on the grid's legend button, its
// colour boxes read back from the dialog's pixels, closed by a click on its Close button.
#include "companion/db/Connection.h"
#include "grid/editor/frmLegend.h"
#include "host/GridEditorWidget.h"
#include "host/QtPlatform.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

QRect pixels(const Widget& w) {
  auto px = [](double t) { return int(t / TwipsPerPixel + 0.5); };
  return QRect(px(w.Left()), px(w.Top()), px(w.Width()), px(w.Height()));
}

struct LegendWindow : ::testing::Test {
  QTemporaryDir dir;
  QString conn;
  GridEditorWidget w;
  GridEditor& g = w.grid();

  void SetUp() override {
    installQtPlatform();
    ASSERT_TRUE(dir.isValid());
    {
      QFile f(dir.filePath("legend.db"));
      ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    conn = QStringLiteral("Data Source=") + dir.filePath("legend.db");
    db::Connection c;
    c.Open(conn);
    c.Execute("CREATE TABLE TQ7TSystem (TSysName TEXT, TSysValue REAL)");
    c.Execute("INSERT INTO TQ7TSystem VALUES ('ColOverdue', 255)");       // red
    c.Execute("INSERT INTO TQ7TSystem VALUES ('ColPaid', 16711680)");     // blue
    c.Execute("CREATE TABLE Tq7TOption (TOptName TEXT, TOptAlias TEXT)");
    c.Execute(QString::fromUtf8("INSERT INTO Tq7TOption VALUES ('ColOverdue', 'เกินกำหนด')"));
    c.Execute("INSERT INTO Tq7TOption VALUES ('ColPaid', 'Paid')");
    c.Close();
    w.resize(640, 300);
    g.SetFirst(2);
    g.addField3(1, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  }
  void TearDown() override { setPlatform(nullptr); }

  QPushButton* legendButton() {
    w.syncNow();
    for (QPushButton* b : w.findChildren<QPushButton*>())
      if (b->isVisible() && b->geometry() == pixels(g.cmdLegend)) return b;
    return nullptr;
  }
};

}  // namespace

TEST_F(LegendWindow, TheLegendButtonOpensTheColoursAndCloseEndsIt) {
  ASSERT_EQ(g.SetLegend("ColOverdue,ColPaid", conn, conn), 1);
  QPushButton* button = legendButton();
  ASSERT_NE(button, nullptr);

  const frmLegend layout;  // where the form puts its boxes, in twips
  bool looked = false;
  QTimer::singleShot(50, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    looked = true;
    EXPECT_EQ(dialog->windowTitle(), "Color Legend");
    const QImage shot = dialog->grab().toImage();
    EXPECT_EQ(QColor(shot.pixel(pixels(layout.Picture1(0)).center())), QColor(255, 0, 0));
    EXPECT_EQ(QColor(shot.pixel(pixels(layout.Picture1(1)).center())), QColor(0, 0, 255));
    // An unused box is hidden: what shows there is the dialog's own background.
    EXPECT_EQ(QColor(shot.pixel(pixels(layout.Picture1(2)).center())), dialog->palette().color(QPalette::Window));
    QStringList texts;
    for (QLabel* l : dialog->findChildren<QLabel*>())
      if (l->isVisible()) texts << l->text();
    EXPECT_TRUE(texts.contains("   Color - Description"));
    EXPECT_TRUE(texts.contains(QString::fromUtf8("เกินกำหนด")));
    EXPECT_TRUE(texts.contains("Paid"));
    EXPECT_EQ(texts.size(), 3);
    QPushButton* close = nullptr;
    for (QPushButton* b : dialog->findChildren<QPushButton*>())
      if (b->text() == "Close") close = b;
    ASSERT_NE(close, nullptr);
    QTest::mouseClick(close, Qt::LeftButton);
  });
  // Should the dialog not close, end it so that the test fails instead of waiting for ever.
  QTimer::singleShot(5000, [] {
    if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) d->reject();
  });
  QTest::mouseClick(button, Qt::LeftButton);  // returns when the legend is closed
  EXPECT_TRUE(looked);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}
