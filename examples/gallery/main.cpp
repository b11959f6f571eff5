// tq7-gallery: the controls on their pages, over an embedded SQLite sample database.
//   tq7-gallery                    the window
//   tq7-gallery --screenshot DIR   renders each page into DIR as PNG and exits
#include "Pages.h"
#include "SampleDatabase.h"

#include "host/HostFonts.h"
#include "host/QtPlatform.h"

#include "host/DataViewWidget.h"
#include "host/FilterDataDialog.h"
#include "host/GridEditorWidget.h"
#include "host/ImagePreviewWidget.h"
#include "host/frmActualWindow.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QTimer>
#include <QTabWidget>
#include <QTextStream>

#include <cstdio>

namespace {

struct Page {
  const char* title;  // shown on the tab
  const char* file;   // the screenshot's name
};

const Page kPages[] = {
    {"ชนิดข้อมูล / Field types", "01-field-types.png"},
    {"ใบแจ้งหนี้ / Invoice", "02-invoice.png"},
    {"อุปกรณ์ / Devices", "devices.png"},
    {"ริบบอน / Ribbon", "ribbon.png"},
    {"เรียกดูข้อมูล / Browse", "browse-first-page.png"},
    {"ภาพและป้าย / Companion", "companion-page.png"},
};

// Lets queued work run: the grids sync their widgets once per turn of the loop, and a shown
// window lays out over several turns.
void settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

// One key pressed and released where the keyboard is, as the window system would deliver it.
void type(QWidget* fallback, int qtKey, const QString& text = QString()) {
  QKeyEvent press(QEvent::KeyPress, qtKey, Qt::NoModifier, text);
  QApplication::sendEvent(QApplication::focusWidget() ? QApplication::focusWidget() : fallback, &press);
  QKeyEvent release(QEvent::KeyRelease, qtKey, Qt::NoModifier, text);
  QApplication::sendEvent(QApplication::focusWidget() ? QApplication::focusWidget() : fallback, &release);
  settle();
}

int screenshots(QMainWindow& window, QTabWidget& tabs, const QString& dir) {
  QTextStream out(stdout);
  if (!QDir().mkpath(dir)) {
    QTextStream(stderr) << "tq7-gallery: cannot make the folder " << dir << "\n";
    return 1;
  }
  const QString folder = QDir(dir).absolutePath();
  out << folder << "\n";
  window.show();
  settle();
  int failed = 0;
  auto shoot = [&](const QString& file) {
    settle();
    const QString path = folder + QLatin1Char('/') + file;
    if (window.grab().save(path, "PNG")) {
      out << "  " << file << "\n";
    } else {
      QTextStream(stderr) << "tq7-gallery: cannot write " << path << "\n";
      ++failed;
    }
  };
  for (int i = 0; i < tabs.count(); ++i) {
    tabs.setCurrentIndex(i);
    shoot(QString::fromLatin1(kPages[i].file));
  }
  // The invoice once more after the clerk has removed its third line with F5: the line is gone
  // from the screen and the running numbers close up.
  if (auto* invoice = window.findChild<tq7::GridEditorWidget*>(QStringLiteral("grdInvoice"))) {
    tabs.setCurrentIndex(1);
    QApplication::setActiveWindow(&window);
    invoice->surfaceView()->setFocus();
    settle();
    invoice->grid().setRecord(3);
    type(invoice, Qt::Key_F5);
    shoot(QStringLiteral("03-invoice-line-removed.png"));
    // A clerk at the keyboard: F3 adds a line, then code, Thai name, quantity, price and date are
    // typed and confirmed with Enter; the next column that takes input follows each confirmation.
    // Save then asks the grid and writes the lines back.
    type(invoice, Qt::Key_F3);
    type(invoice, Qt::Key_Right);
    for (const QString& entry : {QStringLiteral("SG-002"), QString::fromUtf8("น้ำตาลทรายแดง 1 กก."),
                                 QStringLiteral("4"), QStringLiteral("31.5"), QStringLiteral("28/3/2567")}) {
      for (const QChar ch : entry) type(invoice, 0, QString(ch));
      type(invoice, Qt::Key_Return);
    }
    shoot(QStringLiteral("04-invoice-line-typed.png"));
    if (auto* save = window.findChild<QPushButton*>(QStringLiteral("cmdSave"))) save->click();
    shoot(QStringLiteral("05-invoice-saved.png"));
  }
  // Devices: the scale reading a positive and a negative weight, disconnected, and the tracker
  // after a round with the customer's addresses.
  if (QWidget* devices = window.findChild<QWidget*>(QStringLiteral("pageDevices"))) {
    tabs.setCurrentWidget(devices);
    for (const char* state : {"positive", "negative", "disconnected", "tracker"}) {
      if (!gallery::showDevicesState(devices, QString::fromLatin1(state)))
        QTextStream(stderr) << "tq7-gallery: the devices page did not reach " << state << "\n";
      shoot(QStringLiteral("devices-%1.png").arg(QLatin1String(state)));
    }
  }
  // The ribbon in each skin, at rest, hovered and pressed.
  if (auto* ribbon = window.findChild<QWidget*>(QStringLiteral("pgRibbon"))) {
    tabs.setCurrentWidget(ribbon);
    gallery::ribbonScreenshots(ribbon, shoot);
  }
  // The browse page: the filter dialog with a date typed in, the page it filters to (the date
  // reaches the server in quotes), then rows marked with Space and confirmed with Enter, the
  // status line telling the command and its keys.
  if (auto* browse = window.findChild<tq7::DataViewWidget*>(QStringLiteral("dvwBrowse"))) {
    tabs.setCurrentIndex(tabs.indexOf(browse->parentWidget()));
    QApplication::setActiveWindow(&window);
    browse->surfaceView()->setFocus();
    settle();
    QTimer::singleShot(100, [&] {
      auto* dialog = qobject_cast<tq7::FilterDataDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      QListWidget* fields = dialog->fieldList();
      fields->setCurrentRow(2);
      dialog->operatorList()->setCurrentRow(3);  // ">="
      for (const QChar ch : QStringLiteral("1/6/2567")) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
        QApplication::sendEvent(dialog->valueBox(), &press);
      }
      settle();
      QImage composed = window.grab().toImage();
      const QPixmap box = dialog->grab();
      QPainter painter(&composed);
      painter.drawPixmap((composed.width() - box.width()) / 2, (composed.height() - box.height()) / 2, box);
      painter.end();
      const QString path = folder + QStringLiteral("/browse-filter-dialog.png");
      if (composed.save(path, "PNG")) out << "  browse-filter-dialog.png\n";
      else ++failed;
      QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
      QApplication::sendEvent(dialog->valueBox(), &enter);
    });
    type(browse, Qt::Key_F6);  // returns once the dialog has closed
    shoot(QStringLiteral("browse-filtered.png"));
    QApplication::setActiveWindow(&window);
    browse->surfaceView()->setFocus();
    browse->view().mfgData.SetActiveCell(1, 2);
    browse->syncNow();
    for (int k : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space, Qt::Key_Down,
                  Qt::Key_Space, Qt::Key_Return})
      type(browse, k, k == Qt::Key_Space ? QStringLiteral(" ") : k == Qt::Key_Return ? QStringLiteral("\r") : QString());
    shoot(QStringLiteral("browse-multi-selection.png"));
  }
  // The companion page's picture in its 1:1 window, at the picture's own size.
  if (auto* actual = window.findChild<tq7::frmActualWindow*>(QStringLiteral("frmActual"))) {
    if (auto* img = window.findChild<tq7::ImagePreviewWidget*>(QStringLiteral("imgProduct"))) {
      actual->showPicture(img->preview().Picture());
      settle();
      const QString path = folder + QStringLiteral("/companion-frmactual.png");
      if (actual->grab().save(path, "PNG")) out << "  companion-frmactual.png\n"; else ++failed;
      actual->hide();
    }
  }
  out.flush();
  return failed ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tq7-gallery"));
  tq7::installQtPlatform();
  QApplication::setFont(QFont(tq7::defaultThaiFamily(), 10));

  QString shotDir;
  const QStringList args = QApplication::arguments();
  const qsizetype at = args.indexOf(QStringLiteral("--screenshot"));
  if (at >= 0) {
    if (at + 1 >= args.size()) {
      QTextStream(stderr) << "usage: tq7-gallery [--screenshot DIR]\n";
      return 2;
    }
    shotDir = args.at(at + 1);
  }

  const gallery::SampleDatabase db = gallery::openSampleDatabase();
  if (!db.error.isEmpty()) QTextStream(stderr) << "tq7-gallery: " << db.error << "\n";

  QMainWindow window;
  window.setWindowTitle(QStringLiteral("TQ7Designer Gallery"));
  auto* tabs = new QTabWidget(&window);
  tabs->addTab(gallery::makeFieldTypesPage(db.folder), QString::fromUtf8(kPages[0].title));
  tabs->addTab(gallery::makeInvoicePage(db), QString::fromUtf8(kPages[1].title));
  tabs->addTab(gallery::makeDevicesPage(), QString::fromUtf8(kPages[2].title));
  tabs->addTab(gallery::makeRibbonPage(), QString::fromUtf8(kPages[3].title));
  tabs->addTab(gallery::makeBrowsePage(db), QString::fromUtf8(kPages[4].title));
  tabs->addTab(gallery::makeCompanionPage(db.folder), QString::fromUtf8(kPages[5].title));
  window.setCentralWidget(tabs);
  window.resize(1280, 720);

  if (!shotDir.isEmpty()) return screenshots(window, *tabs, shotDir);
  window.show();
  return app.exec();
}
