#pragma once
// The platform services with Qt widgets: message boxes, questions, input and file dialogs, the
// colour dialog, modal core forms, clipboard, key sender, text measurement and the hourglass.
#include "frame/Platform.h"

#include <QString>
#include <functional>

class QWidget;

namespace tq7 {

class QtPlatform : public Platform {
 public:
  QtPlatform() = default;
  ~QtPlatform() override;

  void messageBox(const QString& text) override;
  void infoBox(const QString& text, const QString& title) override;
  bool question(const QString& text, const QString& title, bool defaultYes) override;
  QString inputBox(const QString& prompt, const QString& title, const QString& defaultText) override;
  QString saveFileDialog(const QString& title, const QString& filter, const QString& initialPath) override;
  QString openFileDialog(const QString& title, const QString& filter, const QString& initialPath) override;
  QString folderDialog(const QString& title, const QString& initialPath) override;
  std::optional<Colour> colorDialog(Colour initial) override;
  QString multiLineInput(const QString& caption, const QString& text, const QString& prompt, int maxLength,
                         double widthTwips, double heightTwips) override;
  void showModal(Form& form) override;

  double now() override;
  QString clipboardText() override;
  void setClipboardText(const QString& text) override;
  void processEvents() override;
  void sendKeys(const QString& keys, bool wait) override;
  double textWidth(const Font& font, const QString& text) override;
  double textHeight(const Font& font) override;
  void setMousePointer(MousePointer pointer) override;

  QString machineName() override;
  QString applicationFolder() override;
  QString temporaryFolder() override;
  bool openInViewer(const QString& path) override;

  // A core form with a dialog of its own, found by the form's name: the runner shows it modally
  // and returns once the form has hidden itself. Forms without one get the generic dialog.
  using FormRunner = std::function<void(Form& form, QWidget* parent)>;
  static void setFormRunner(const QString& formName, FormRunner runner);

  // "Text (*.txt)|*.txt|All (*.*)|*.*" as Qt writes it: "Text (*.txt);;All (*.*)".
  static QString qtFilter(const QString& filter);

 private:
  bool hourglass_ = false;
  // The clock's last whole second and its local date and time as a serial.
  int64_t nowSecond_ = -1;
  double nowSerial_ = 0;
};

// Installs one Qt platform for the whole process and answers it.
QtPlatform& installQtPlatform();

}  // namespace tq7
