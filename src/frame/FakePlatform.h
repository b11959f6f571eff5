#pragma once
// A scripted platform for tests: records every call as a line of text and answers from a queue.
// A call that needs an answer takes the next one queued, or a neutral answer when none is.
#include "frame/Platform.h"

#include <QStringList>
#include <QVariant>
#include <deque>
#include <functional>

namespace tq7 {

class FakePlatform : public Platform {
 public:
  FakePlatform();   // installs itself
  ~FakePlatform() override;  // puts the quiet platform back

  QStringList calls;             // "messageBox: text", "question: text", ...
  std::deque<QVariant> answers;  // the next answers, in order
  double clock = 45000.5;        // now(), a fixed serial unless a test moves it
  QString clipboard;
  int processEventsCount = 0;
  MousePointer pointer = MousePointer::Default;
  // Runs a modal form: type into it, press its buttons. Without one the form is hidden at once.
  std::function<void(Form&)> onShowModal;

  // The texts of the message boxes shown, in order.
  QStringList messages() const;
  int count(const QString& prefix) const;

  void messageBox(const QString& text) override;
  void infoBox(const QString& text, const QString& title) override;  // "infoBox: text | title"
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
  void setMousePointer(MousePointer p) override;
  QString machineName() override;
  QString applicationFolder() override;
  QString temporaryFolder() override;
  bool openInViewer(const QString& path) override;

 private:
  QVariant next(const QVariant& neutral);
};

}  // namespace tq7
