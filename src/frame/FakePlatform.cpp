#include "frame/FakePlatform.h"

#include "frame/Widget.h"

#include <QDir>

namespace tq7 {

FakePlatform::FakePlatform() { setPlatform(this); }
FakePlatform::~FakePlatform() { setPlatform(nullptr); }

QVariant FakePlatform::next(const QVariant& neutral) {
  if (answers.empty()) return neutral;
  QVariant v = answers.front();
  answers.pop_front();
  return v;
}

QStringList FakePlatform::messages() const {
  QStringList out;
  const QString p = QStringLiteral("messageBox: ");
  for (const QString& c : calls)
    if (c.startsWith(p)) out.append(c.mid(p.size()));
  return out;
}

int FakePlatform::count(const QString& prefix) const {
  int n = 0;
  for (const QString& c : calls)
    if (c.startsWith(prefix)) ++n;
  return n;
}

void FakePlatform::messageBox(const QString& text) { calls.append(QStringLiteral("messageBox: ") + text); }

void FakePlatform::infoBox(const QString& text, const QString& title) {
  calls.append(QStringLiteral("infoBox: ") + text + QStringLiteral(" | ") + title);
}

bool FakePlatform::question(const QString& text, const QString& title, bool defaultYes) {
  calls.append(QStringLiteral("question: ") + text + QStringLiteral(" | ") + title);
  return next(defaultYes).toBool();
}

QString FakePlatform::inputBox(const QString& prompt, const QString& title, const QString& defaultText) {
  calls.append(QStringLiteral("inputBox: ") + prompt + QStringLiteral(" | ") + title);
  return next(defaultText).toString();
}

QString FakePlatform::saveFileDialog(const QString& title, const QString& filter, const QString& initialPath) {
  calls.append(QStringLiteral("saveFileDialog: ") + title + QStringLiteral(" | ") + filter + QStringLiteral(" | ") +
               initialPath);
  return next(QString()).toString();
}

QString FakePlatform::openFileDialog(const QString& title, const QString& filter, const QString& initialPath) {
  calls.append(QStringLiteral("openFileDialog: ") + title + QStringLiteral(" | ") + filter + QStringLiteral(" | ") +
               initialPath);
  return next(QString()).toString();
}

QString FakePlatform::folderDialog(const QString& title, const QString& initialPath) {
  calls.append(QStringLiteral("folderDialog: ") + title + QStringLiteral(" | ") + initialPath);
  return next(QString()).toString();
}

std::optional<Colour> FakePlatform::colorDialog(Colour initial) {
  calls.append(QStringLiteral("colorDialog: ") + QString::number(initial, 16));
  const QVariant v = next(QVariant());
  if (!v.isValid() || v.isNull()) return std::nullopt;
  return Colour(v.toUInt());
}

QString FakePlatform::multiLineInput(const QString& caption, const QString& text, const QString& prompt,
                                     int maxLength, double, double) {
  calls.append(QStringLiteral("multiLineInput: ") + caption + QStringLiteral(" | ") + prompt + QStringLiteral(" | ") +
               QString::number(maxLength));
  return next(text).toString();
}

void FakePlatform::showModal(Form& form) {
  calls.append(QStringLiteral("showModal: ") + form.Name());
  form.Show();
  if (onShowModal) onShowModal(form);
  form.Hide();
}

double FakePlatform::now() { return clock; }
QString FakePlatform::clipboardText() {
  calls.append(QStringLiteral("clipboardText"));
  return clipboard;
}
void FakePlatform::setClipboardText(const QString& text) {
  calls.append(QStringLiteral("setClipboardText: ") + text);
  clipboard = text;
}
void FakePlatform::processEvents() { ++processEventsCount; }
void FakePlatform::sendKeys(const QString& keys, bool wait) {
  calls.append(QStringLiteral("sendKeys: ") + keys + (wait ? QStringLiteral(" | wait") : QString()));
}
// A fixed-pitch measure so that layout tests do not depend on installed fonts.
double FakePlatform::textWidth(const Font& font, const QString& text) { return text.size() * font.Size * 12.0; }
double FakePlatform::textHeight(const Font& font) { return font.Size * 24.0; }
void FakePlatform::setMousePointer(MousePointer p) {
  calls.append(p == MousePointer::Hourglass ? QStringLiteral("mousePointer: hourglass")
                                            : QStringLiteral("mousePointer: default"));
  pointer = p;
}
QString FakePlatform::machineName() { return QStringLiteral("TESTPC"); }
QString FakePlatform::applicationFolder() { return QDir::currentPath(); }
QString FakePlatform::temporaryFolder() { return QDir::tempPath(); }
bool FakePlatform::openInViewer(const QString& path) {
  calls.append(QStringLiteral("openInViewer: ") + path);
  return next(true).toBool();
}

}  // namespace tq7
