// The Qt platform services. Modal boxes are answered from a timer, through their own widgets,
// the way a person would: type, then press the button.
#include "frame/Widget.h"
#include "host/QtPlatform.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QSysInfo>
#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

// Runs fn on the modal window once it is up.
void whenModal(std::function<void(QWidget*)> fn) {
  auto* timer = new QTimer;
  timer->setInterval(10);
  QObject::connect(timer, &QTimer::timeout, [timer, fn] {
    if (QWidget* w = QApplication::activeModalWidget()) {
      timer->stop();
      timer->deleteLater();
      fn(w);
    }
  });
  timer->start();
}

class QtPlatformTest : public ::testing::Test {
 protected:
  void SetUp() override { p = &installQtPlatform(); }
  void TearDown() override { setPlatform(nullptr); }
  QtPlatform* p = nullptr;
};

TEST_F(QtPlatformTest, ClipboardRoundTripKeepsThai) {
  const QString text = QStringLiteral("รหัส\tชื่อ\r\nA01\tน้ำปลา\r\n");
  platform().setClipboardText(text);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), text);
  QGuiApplication::clipboard()->setText(QStringLiteral("จาก Qt"));
  EXPECT_EQ(platform().clipboardText(), QStringLiteral("จาก Qt"));
}

TEST_F(QtPlatformTest, TextIsMeasuredInTwipsOfTheMappedFont) {
  tq7::Font f;
  const double one = p->textWidth(f, QStringLiteral("ก"));
  const double three = p->textWidth(f, QStringLiteral("กขค"));
  EXPECT_GT(one, 30);  // at least two pixels
  EXPECT_GT(three, 2.5 * one);
  // Marks above a letter take no width of their own.
  EXPECT_NEAR(p->textWidth(f, QStringLiteral("กี่")), one, 15);
  tq7::Font big = f;
  big.Size = 16.5;
  EXPECT_GT(p->textWidth(big, QStringLiteral("กขค")), 1.8 * three);
  const double h = p->textHeight(f);
  EXPECT_GT(h, 150);  // 8.25 points is eleven pixels before any line spacing
  EXPECT_LT(h, 450);
  EXPECT_GT(p->textHeight(big), 1.8 * h);
}

TEST_F(QtPlatformTest, FiltersOfTheClassicFormBecomeQtFilters) {
  EXPECT_EQ(QtPlatform::qtFilter(QStringLiteral("Text (*.txt)|*.txt|All (*.*)|*.*")),
            QStringLiteral("Text (*.txt);;All (*.*)"));
  EXPECT_EQ(QtPlatform::qtFilter(QStringLiteral("Excel|*.xls;*.xlsx")), QStringLiteral("Excel (*.xls *.xlsx)"));
  EXPECT_EQ(QtPlatform::qtFilter(QString()), QString());
}

TEST_F(QtPlatformTest, MessageBoxShowsTheTextUnderTheApplicationsName) {
  QString text, title;
  int buttons = 0;
  whenModal([&](QWidget* w) {
    auto* box = qobject_cast<QMessageBox*>(w);
    ASSERT_NE(box, nullptr);
    text = box->text();
    title = box->windowTitle();
    buttons = int(box->buttons().size());
    box->button(QMessageBox::Ok)->click();
  });
  platform().messageBox(QStringLiteral("บันทึกเรียบร้อย"));
  EXPECT_EQ(text, QStringLiteral("บันทึกเรียบร้อย"));
  EXPECT_EQ(title, QStringLiteral("TQ7 Host Tests"));
  EXPECT_EQ(buttons, 1);
}

TEST_F(QtPlatformTest, QuestionAnswersItsDefaultToEnter) {
  for (bool defaultYes : {true, false}) {
    QString title;
    whenModal([&](QWidget* w) {
      title = w->windowTitle();
      QTest::keyClick(w, Qt::Key_Return);
    });
    EXPECT_EQ(platform().question(QStringLiteral("ลบรายการนี้?"), QStringLiteral("Delete"), defaultYes), defaultYes);
    EXPECT_EQ(title, QStringLiteral("Delete"));
  }
  whenModal([](QWidget* w) { static_cast<QMessageBox*>(w)->button(QMessageBox::Yes)->click(); });
  EXPECT_TRUE(platform().question(QStringLiteral("?"), QString(), false));
}

TEST_F(QtPlatformTest, InputBoxAnswersTheTypedTextOrNothingWhenCancelled) {
  whenModal([](QWidget* w) {
    auto* edit = w->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->text(), QStringLiteral("เดิม"));
    edit->selectAll();
    QTest::keyClicks(edit, "A-17");
    static_cast<QDialog*>(w)->accept();
  });
  EXPECT_EQ(platform().inputBox(QStringLiteral("รหัส"), QStringLiteral("ค้นหา"), QStringLiteral("เดิม")),
            QStringLiteral("A-17"));
  whenModal([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
  EXPECT_EQ(platform().inputBox(QStringLiteral("รหัส"), QString(), QStringLiteral("เดิม")), QString());
}

TEST_F(QtPlatformTest, FileDialogsTakeTheClassicFilterAndAnswerThePath) {
  QStringList filters;
  const QString target = QDir(QDir::tempPath()).filePath(QStringLiteral("tq7_export.txt"));
  whenModal([&](QWidget* w) {
    auto* d = qobject_cast<QFileDialog*>(w);
    ASSERT_NE(d, nullptr);
    filters = d->nameFilters();
    d->selectFile(target);
    static_cast<QDialog*>(d)->accept();
  });
  EXPECT_EQ(platform().saveFileDialog(QStringLiteral("ส่งออก"), QStringLiteral("Text (*.txt)|*.txt|All (*.*)|*.*"),
                                      QDir::tempPath()),
            target);
  EXPECT_EQ(filters, (QStringList{"Text (*.txt)", "All (*.*)"}));
  whenModal([](QWidget* w) { static_cast<QDialog*>(w)->reject(); });
  EXPECT_EQ(platform().openFileDialog(QStringLiteral("เปิด"), QString(), QDir::tempPath()), QString());
}

TEST_F(QtPlatformTest, ColourDialogAnswersBgrOrNothing) {
  whenModal([](QWidget* w) {
    auto* d = qobject_cast<QColorDialog*>(w);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->currentColor(), QColor(0xC0, 0xC0, 0xFF));  // 0xFFC0C0 came in as BGR
    d->setCurrentColor(QColor(10, 20, 30));
    d->accept();
  });
  EXPECT_EQ(platform().colorDialog(0xFFC0C0), std::optional<Colour>(0x1E140Au));
  whenModal([](QWidget* w) { static_cast<QDialog*>(w)->reject(); });
  EXPECT_EQ(platform().colorDialog(0), std::nullopt);
}

TEST_F(QtPlatformTest, MultiLineInputKeepsToItsLengthAndSize) {
  QSize size;
  whenModal([&](QWidget* w) {
    size = w->size();
    auto* edit = w->findChild<QPlainTextEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->moveCursor(QTextCursor::End);
    QTest::keyClicks(edit, "defgh");
    w->close();
  });
  EXPECT_EQ(platform().multiLineInput(QStringLiteral("หมายเหตุ"), QStringLiteral("abc"), QString(), 6, 6000, 4500),
            QStringLiteral("abcdef"));
  EXPECT_EQ(size, QSize(400, 300));
}

TEST_F(QtPlatformTest, ShowModalMirrorsTheFormAndReturnsWhenItHidesItself) {
  Form form(QStringLiteral("frmFind"));
  form.setCaption(QStringLiteral("ค้นหา"));
  form.Move(0, 0, 4500, 3000);
  Label label(QStringLiteral("lblInfo"));
  label.setCaption(QStringLiteral("พิมพ์รหัส"));
  label.Move(150, 150, 3000, 300);
  TextBox box(QStringLiteral("txtCode"));
  box.Move(150, 600, 3000, 360);
  Button ok(QStringLiteral("cmdOK"));
  ok.setCaption(QStringLiteral("ตกลง"));
  ok.Move(150, 1200, 1200, 450);
  ok.onClick = [&] {
    label.setCaption(QStringLiteral("saved ") + box.Text());
    form.Hide();
  };
  form.addChild(label);
  form.addChild(box);
  form.addChild(ok);

  QString typed, shownCaption, title;
  QRect editPlace;
  whenModal([&](QWidget* w) {
    title = w->windowTitle();
    auto* edit = w->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    editPlace = edit->geometry();
    QTest::keyClicks(edit, "A17");
    typed = box.Text();  // typing reached the core's text box
    label.setCaption(QStringLiteral("กำลังค้นหา"));  // and the core's change reaches the screen
    QTest::qWait(120);
    shownCaption = w->findChild<QLabel*>()->text();
    QTest::mouseClick(w->findChild<QPushButton*>(), Qt::LeftButton);
  });
  platform().showModal(form);
  EXPECT_EQ(title, QStringLiteral("ค้นหา"));
  EXPECT_EQ(editPlace, QRect(10, 40, 200, 24));
  EXPECT_EQ(typed, QStringLiteral("A17"));
  EXPECT_EQ(shownCaption, QStringLiteral("กำลังค้นหา"));
  EXPECT_EQ(label.Caption(), QStringLiteral("saved A17"));
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtPlatformTest, SendKeysTypesIntoTheFocusWidget) {
  QLineEdit edit;
  edit.show();
  edit.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&edit));
  edit.setFocus();
  QSignalSpy entered(&edit, &QLineEdit::returnPressed);
  platform().sendKeys(QStringLiteral("ab+c{ENTER}x{BS}{{}"), true);
  EXPECT_EQ(edit.text(), QStringLiteral("abC{"));
  EXPECT_EQ(entered.count(), 1);
}

TEST_F(QtPlatformTest, TheHourglassIsOneOverrideAndComesOffOnce) {
  platform().setMousePointer(MousePointer::Hourglass);
  platform().setMousePointer(MousePointer::Hourglass);
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  platform().setMousePointer(MousePointer::Default);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  platform().setMousePointer(MousePointer::Default);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(QtPlatformTest, SystemAnswers) {
  EXPECT_EQ(platform().machineName(), QSysInfo::machineHostName());
  EXPECT_EQ(platform().applicationFolder(), QCoreApplication::applicationDirPath());
  EXPECT_TRUE(QDir(platform().temporaryFolder()).exists());
  const double now = platform().now();
  const double expected = double(QDate(1899, 12, 30).daysTo(QDate::currentDate()));
  EXPECT_GE(now, expected);
  EXPECT_LT(now, expected + 1.0001);
}

}  // namespace
