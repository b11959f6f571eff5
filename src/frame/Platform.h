#pragma once
// The only road from the core to the outside world. The Qt host installs its implementation;
// tests install FakePlatform, which records every call and answers from a queue.
#include "frame/Types.h"

#include <QString>
#include <optional>

namespace tq7 {

class Form;

enum class MousePointer { Default, Hourglass };

class Platform {
 public:
  virtual ~Platform() = default;

  // A plain modal box with one OK button and no title of its own.
  virtual void messageBox(const QString& text) = 0;
  // An information box with one OK button and a title of its own (the help box of F1).
  virtual void infoBox(const QString& text, const QString& title) = 0;
  // Yes/No question; answers true for Yes.
  virtual bool question(const QString& text, const QString& title, bool defaultYes) = 0;
  // Input box; a cancelled box answers an empty text, as the classic input box does.
  virtual QString inputBox(const QString& prompt, const QString& title, const QString& defaultText) = 0;
  // File and folder dialogs; empty when the user cancels.
  virtual QString saveFileDialog(const QString& title, const QString& filter, const QString& initialPath) = 0;
  virtual QString openFileDialog(const QString& title, const QString& filter, const QString& initialPath) = 0;
  virtual QString folderDialog(const QString& title, const QString& initialPath) = 0;
  // Colour dialog; nothing when cancelled.
  virtual std::optional<Colour> colorDialog(Colour initial) = 0;
  // A modal box for text of several lines; answers the text as it stands when closed.
  virtual QString multiLineInput(const QString& caption, const QString& text, const QString& prompt,
                                 int maxLength, double widthTwips, double heightTwips) = 0;
  // Runs a core form modally; returns when the form hides itself.
  virtual void showModal(Form& form) = 0;

  // Clock: now as a date serial (whole days since 30 December 1899, time as the fraction).
  virtual double now() = 0;
  virtual QString clipboardText() = 0;
  virtual void setClipboardText(const QString& text) = 0;
  // Lets pending window messages through once.
  virtual void processEvents() = 0;
  // Synthetic keystrokes, the text handed on unchanged.
  virtual void sendKeys(const QString& keys, bool wait) = 0;
  // Text measurement in twips.
  virtual double textWidth(const Font& font, const QString& text) = 0;
  virtual double textHeight(const Font& font) = 0;
  virtual void setMousePointer(MousePointer pointer) = 0;

  virtual QString machineName() = 0;
  virtual QString applicationFolder() = 0;
  virtual QString temporaryFolder() = 0;
  // Opens a file in the system's viewer; false when nothing could open it.
  virtual bool openInViewer(const QString& path) = 0;
};

// The platform in force. Before a host or a test installs one, a quiet headless platform
// answers: no boxes, empty answers, the real clock.
Platform& platform();
// Installs p (not owned); nullptr puts the quiet platform back.
void setPlatform(Platform* p);

}  // namespace tq7
