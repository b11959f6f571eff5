#include "frame/Platform.h"

#include "frame/Widget.h"

#include <QDateTime>
#include <QDir>
#include <QSysInfo>
#include <QCoreApplication>

namespace tq7 {
namespace {

double serialOf(const QDateTime& t) {
  static const QDate epoch(1899, 12, 30);
  const double days = double(epoch.daysTo(t.date()));
  const double frac = double(t.time().msecsSinceStartOfDay()) / 86400000.0;
  return days + frac;
}

// Answers as a process without a screen would: nothing is shown, nothing is typed.
class QuietPlatform final : public Platform {
 public:
  void messageBox(const QString&) override {}
  void infoBox(const QString&, const QString&) override {}
  bool question(const QString&, const QString&, bool defaultYes) override { return defaultYes; }
  QString inputBox(const QString&, const QString&, const QString&) override { return {}; }
  QString saveFileDialog(const QString&, const QString&, const QString&) override { return {}; }
  QString openFileDialog(const QString&, const QString&, const QString&) override { return {}; }
  QString folderDialog(const QString&, const QString&) override { return {}; }
  std::optional<Colour> colorDialog(Colour) override { return std::nullopt; }
  QString multiLineInput(const QString&, const QString& text, const QString&, int, double, double) override {
    return text;
  }
  void showModal(Form& form) override { form.Hide(); }
  double now() override { return serialOf(QDateTime::currentDateTime()); }
  QString clipboardText() override { return clipboard_; }
  void setClipboardText(const QString& text) override { clipboard_ = text; }
  // A control that waits by pumping (the address tracker's transfers) must not spin for ever in
  // an application that installed no platform of its own.
  void processEvents() override {
    if (QCoreApplication::instance()) QCoreApplication::processEvents();
  }
  void sendKeys(const QString&, bool) override {}
  double textWidth(const Font& font, const QString& text) override {
    return text.size() * font.Size * 0.55 * 20.0;
  }
  double textHeight(const Font& font) override { return font.Size * 1.25 * 20.0; }
  void setMousePointer(MousePointer) override {}
  QString machineName() override { return QSysInfo::machineHostName(); }
  QString applicationFolder() override {
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
  }
  QString temporaryFolder() override { return QDir::tempPath(); }
  bool openInViewer(const QString&) override { return false; }

 private:
  QString clipboard_;
};

QuietPlatform& quiet() {
  static QuietPlatform p;
  return p;
}
Platform* current = nullptr;

}  // namespace

Platform& platform() { return current ? *current : quiet(); }
void setPlatform(Platform* p) { current = p; }

}  // namespace tq7
