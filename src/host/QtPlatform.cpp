#include "host/QtPlatform.h"

#include "frame/Widget.h"
#include "host/HostColours.h"
#include "host/HostFonts.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDateTime>
#include <QDesktopServices>
#include <QDialog>
#include <QHash>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFontMetricsF>
#include <ctime>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <vector>

namespace tq7 {
namespace {

int px(double twips) { return int(twips / TwipsPerPixel + 0.5); }

QWidget* dialogParent() { return QApplication::activeWindow(); }

QString boxTitle() { return QGuiApplication::applicationDisplayName(); }

// A picture box of a core form: filled with its back colour, its picture drawn over it.
class PictureView : public QWidget {
 public:
  PictureView(PictureBox& box, QWidget* parent) : QWidget(parent), box_(box) {}
  // Repaints only when what the box shows has changed.
  void pull() {
    const QColor back = toQColor(box_.BackColor());
    if (back == back_ && box_.Picture().cacheKey() == pictureKey_) return;
    back_ = back;
    pictureKey_ = box_.Picture().cacheKey();
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.fillRect(rect(), back_);
    if (!box_.Picture().isNull()) p.drawImage(QPoint(0, 0), box_.Picture());
  }

 private:
  PictureBox& box_;
  QColor back_;
  qint64 pictureKey_ = 0;
};

// A core form on the screen: one Qt widget for each child it knows, placed by the child's
// twips, mirrored both ways. The core changes its states from its own handlers, so the dialog
// reads them back after every action and on a short tick, and ends when the form hides itself.
class FormDialog : public QDialog {
 public:
  FormDialog(Form& form, QWidget* parent) : QDialog(parent), form_(form) {
    for (Widget* child : form.Children()) {
      QWidget* q = nullptr;
      if (auto* label = dynamic_cast<Label*>(child)) {
        q = new QLabel(label->Caption(), this);
      } else if (auto* box = dynamic_cast<TextBox*>(child)) {
        if (box->MultiLine()) {
          auto* edit = new QPlainTextEdit(box->Text(), this);
          QObject::connect(edit, &QPlainTextEdit::textChanged, this, [this, box, edit] {
            if (edit->toPlainText() != box->Text()) box->setText(edit->toPlainText());
            pull();
          });
          q = edit;
        } else {
          auto* edit = new QLineEdit(box->Text(), this);
          QObject::connect(edit, &QLineEdit::textEdited, this, [this, box](const QString& t) {
            box->setText(t);
            pull();
          });
          q = edit;
        }
      } else if (auto* button = dynamic_cast<Button*>(child)) {
        auto* push = new QPushButton(button->Caption(), this);
        push->setAutoDefault(false);
        QObject::connect(push, &QPushButton::clicked, this, [this, button] {
          button->Click();
          pull();
        });
        q = push;
      } else if (auto* picture = dynamic_cast<PictureBox*>(child)) {
        q = new PictureView(*picture, this);
      } else if (auto* list = dynamic_cast<ListBox*>(child)) {
        auto* view = new QListWidget(this);
        QObject::connect(view, &QListWidget::currentRowChanged, this, [this, list](int row) {
          if (!pulling_ && row != list->ListIndex()) list->setListIndex(row);
          pull();
        });
        q = view;
      }
      if (q) bound_.push_back({child, q});
    }
    QObject::connect(&tick_, &QTimer::timeout, this, [this] { pull(); });
    tick_.start(50);
    pull();
  }

  // Core to screen.
  void pull() {
    if (pulling_) return;
    pulling_ = true;
    setWindowTitle(form_.Caption());
    if (form_.Width() > 0 && form_.Height() > 0) resize(px(form_.Width()), px(form_.Height()));
    for (const Bound& b : bound_) {
      const QRect g(px(b.w->Left()), px(b.w->Top()), px(b.w->Width()), px(b.w->Height()));
      if (g.width() > 0 && g.height() > 0 && b.q->geometry() != g) b.q->setGeometry(g);
      if (b.q->isVisibleTo(this) != b.w->Visible()) b.q->setVisible(b.w->Visible());
      if (b.q->isEnabled() != b.w->Enabled()) b.q->setEnabled(b.w->Enabled());
      if (b.q->toolTip() != b.w->ToolTipText()) b.q->setToolTip(b.w->ToolTipText());
      if (auto* label = dynamic_cast<Label*>(b.w)) {
        auto* q = static_cast<QLabel*>(b.q);
        if (q->text() != label->Caption()) q->setText(label->Caption());
      } else if (auto* box = dynamic_cast<TextBox*>(b.w)) {
        if (auto* line = qobject_cast<QLineEdit*>(b.q)) {
          if (line->text() != box->Text()) line->setText(box->Text());
          line->setMaxLength(box->MaxLength() > 0 ? box->MaxLength() : 32767);
          line->setReadOnly(box->Locked());
        } else if (auto* edit = qobject_cast<QPlainTextEdit*>(b.q)) {
          if (edit->toPlainText() != box->Text()) edit->setPlainText(box->Text());
          edit->setReadOnly(box->Locked());
        }
      } else if (auto* button = dynamic_cast<Button*>(b.w)) {
        auto* q = static_cast<QPushButton*>(b.q);
        if (q->text() != button->Caption()) q->setText(button->Caption());
      } else if (auto* list = dynamic_cast<ListBox*>(b.w)) {
        auto* q = static_cast<QListWidget*>(b.q);
        bool same = q->count() == list->ListCount();
        for (int i = 0; same && i < q->count(); ++i) same = q->item(i)->text() == list->List(i);
        if (!same) {
          q->clear();
          q->addItems(list->Items());
        }
        if (q->currentRow() != list->ListIndex()) q->setCurrentRow(list->ListIndex());
      } else if (dynamic_cast<PictureBox*>(b.w)) {
        static_cast<PictureView*>(b.q)->pull();
      }
    }
    pulling_ = false;
    if (!form_.Visible() && isVisible()) accept();
  }

  bool formHidden() const { return !form_.Visible(); }

 private:
  struct Bound {
    Widget* w;
    QWidget* q;
  };
  Form& form_;
  std::vector<Bound> bound_;
  QTimer tick_;
  bool pulling_ = false;
};

double serialOf(const QDateTime& t) {
  static const QDate epoch(1899, 12, 30);
  return double(epoch.daysTo(t.date())) + double(t.time().msecsSinceStartOfDay()) / 86400000.0;
}

struct KeyStroke {
  int key;
  QString text;
};

// The keys of the classic braces forms.
std::optional<KeyStroke> namedKey(const QString& name) {
  const QString n = name.toUpper();
  if (n == u"ENTER" || n == u"RETURN" || n == u"~") return KeyStroke{Qt::Key_Return, QStringLiteral("\r")};
  if (n == u"TAB") return KeyStroke{Qt::Key_Tab, QStringLiteral("\t")};
  if (n == u"ESC" || n == u"ESCAPE") return KeyStroke{Qt::Key_Escape, QString(QChar(27))};
  if (n == u"BACKSPACE" || n == u"BS" || n == u"BKSP") return KeyStroke{Qt::Key_Backspace, QString(QChar(8))};
  if (n == u"DEL" || n == u"DELETE") return KeyStroke{Qt::Key_Delete, {}};
  if (n == u"INS" || n == u"INSERT") return KeyStroke{Qt::Key_Insert, {}};
  if (n == u"HOME") return KeyStroke{Qt::Key_Home, {}};
  if (n == u"END") return KeyStroke{Qt::Key_End, {}};
  if (n == u"PGUP") return KeyStroke{Qt::Key_PageUp, {}};
  if (n == u"PGDN") return KeyStroke{Qt::Key_PageDown, {}};
  if (n == u"UP") return KeyStroke{Qt::Key_Up, {}};
  if (n == u"DOWN") return KeyStroke{Qt::Key_Down, {}};
  if (n == u"LEFT") return KeyStroke{Qt::Key_Left, {}};
  if (n == u"RIGHT") return KeyStroke{Qt::Key_Right, {}};
  if (n.size() >= 2 && n[0] == u'F') {
    bool ok = false;
    const int f = n.mid(1).toInt(&ok);
    if (ok && f >= 1 && f <= 16) return KeyStroke{Qt::Key_F1 + (f - 1), {}};
  }
  if (n.size() == 1) {  // {+} {^} {%} {~} {{} {}} {(} {)}: the character itself
    const QChar c = name[0];
    return KeyStroke{c.unicode() < 0x80 ? int(c.unicode()) : int(Qt::Key_unknown), QString(c)};
  }
  return std::nullopt;
}

KeyStroke plainKey(QChar c) {
  const char16_t u = c.unicode();
  if (u >= u'a' && u <= u'z') return {Qt::Key_A + (u - u'a'), QString(c)};
  if (u >= u'A' && u <= u'Z') return {Qt::Key_A + (u - u'A'), QString(c)};
  if (u >= 0x20 && u < 0x7F) return {int(u), QString(c)};  // Qt's keys of ASCII are the characters
  return {Qt::Key_unknown, QString(c)};  // Thai and the rest arrive as text
}

}  // namespace

QtPlatform::~QtPlatform() {
  if (hourglass_ && QGuiApplication::instance()) QGuiApplication::restoreOverrideCursor();
}

void QtPlatform::messageBox(const QString& text) {
  QMessageBox box(QMessageBox::NoIcon, boxTitle(), text, QMessageBox::Ok, dialogParent());
  box.exec();
}

void QtPlatform::infoBox(const QString& text, const QString& title) {
  QMessageBox box(QMessageBox::Information, title, text, QMessageBox::Ok, dialogParent());
  box.exec();
}

bool QtPlatform::question(const QString& text, const QString& title, bool defaultYes) {
  QMessageBox box(QMessageBox::Question, title.isEmpty() ? boxTitle() : title, text,
                  QMessageBox::Yes | QMessageBox::No, dialogParent());
  box.setDefaultButton(defaultYes ? QMessageBox::Yes : QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

QString QtPlatform::inputBox(const QString& prompt, const QString& title, const QString& defaultText) {
  QInputDialog dialog(dialogParent());
  dialog.setWindowTitle(title.isEmpty() ? boxTitle() : title);
  dialog.setLabelText(prompt);
  dialog.setTextValue(defaultText);
  if (dialog.exec() != QDialog::Accepted) return {};
  return dialog.textValue();
}

QString QtPlatform::qtFilter(const QString& filter) {
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList out;
  for (qsizetype i = 0; i < parts.size(); i += 2) {
    QString caption = parts[i].trimmed();
    if (i + 1 >= parts.size()) {  // a caption with no pattern: take it as the pattern
      if (!caption.isEmpty()) out << caption;
      break;
    }
    QString patterns = parts[i + 1].trimmed();
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    // Qt reads the patterns from the last brackets of an entry: drop the caption's own copy.
    static const QRegularExpression trailing(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    caption.remove(trailing);
    out << (caption.isEmpty() ? patterns : caption + QStringLiteral(" (") + patterns + QLatin1Char(')'));
  }
  return out.join(QStringLiteral(";;"));
}

namespace {
QString runFileDialog(QFileDialog::AcceptMode mode, QFileDialog::FileMode fileMode, const QString& title,
                      const QString& filter, const QString& initialPath) {
  QFileDialog dialog(dialogParent(), title);
  dialog.setOption(QFileDialog::DontUseNativeDialog, true);  // the same dialog everywhere, tests included
  dialog.setAcceptMode(mode);
  dialog.setFileMode(fileMode);
  if (fileMode == QFileDialog::Directory) dialog.setOption(QFileDialog::ShowDirsOnly, true);
  if (!filter.isEmpty()) dialog.setNameFilters(QtPlatform::qtFilter(filter).split(QStringLiteral(";;")));
  if (!initialPath.isEmpty()) {
    const QFileInfo info(initialPath);
    if (info.isDir()) {
      dialog.setDirectory(initialPath);
    } else {
      dialog.setDirectory(info.absolutePath());
      dialog.selectFile(info.fileName());
    }
  }
  if (dialog.exec() != QDialog::Accepted) return {};
  const QStringList files = dialog.selectedFiles();
  return files.isEmpty() ? QString() : QDir::toNativeSeparators(files.first());
}
}  // namespace

QString QtPlatform::saveFileDialog(const QString& title, const QString& filter, const QString& initialPath) {
  return runFileDialog(QFileDialog::AcceptSave, QFileDialog::AnyFile, title, filter, initialPath);
}

QString QtPlatform::openFileDialog(const QString& title, const QString& filter, const QString& initialPath) {
  return runFileDialog(QFileDialog::AcceptOpen, QFileDialog::ExistingFile, title, filter, initialPath);
}

QString QtPlatform::folderDialog(const QString& title, const QString& initialPath) {
  return runFileDialog(QFileDialog::AcceptOpen, QFileDialog::Directory, title, {}, initialPath);
}

std::optional<Colour> QtPlatform::colorDialog(Colour initial) {
  QColorDialog dialog(toQColor(initial), dialogParent());
  dialog.setOption(QColorDialog::DontUseNativeDialog, true);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return fromQColor(dialog.selectedColor());
}

QString QtPlatform::multiLineInput(const QString& caption, const QString& text, const QString& prompt, int maxLength,
                                   double widthTwips, double heightTwips) {
  QDialog dialog(dialogParent());
  dialog.setWindowTitle(caption.isEmpty() ? boxTitle() : caption);
  auto* layout = new QVBoxLayout(&dialog);
  if (!prompt.isEmpty()) layout->addWidget(new QLabel(prompt, &dialog));
  auto* edit = new QPlainTextEdit(&dialog);
  edit->setPlainText(maxLength > 0 ? text.left(maxLength) : text);
  if (maxLength > 0) {
    // Typing or pasting past the limit keeps the first maxLength characters.
    QObject::connect(edit, &QPlainTextEdit::textChanged, &dialog, [edit, maxLength] {
      const QString t = edit->toPlainText();
      if (t.size() <= maxLength) return;
      QTextCursor c = edit->textCursor();
      const int pos = std::min<int>(c.position(), maxLength);
      const QSignalBlocker block(edit);
      edit->setPlainText(t.left(maxLength));
      c = edit->textCursor();
      c.setPosition(pos);
      edit->setTextCursor(c);
    });
  }
  layout->addWidget(edit);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  layout->addWidget(buttons);
  if (widthTwips > 0 && heightTwips > 0) dialog.resize(px(widthTwips), px(heightTwips));
  edit->setFocus();
  dialog.exec();
  return edit->toPlainText();
}

namespace {
QHash<QString, QtPlatform::FormRunner>& formRunners() {
  static QHash<QString, QtPlatform::FormRunner> runners;
  return runners;
}
}  // namespace

void QtPlatform::setFormRunner(const QString& formName, FormRunner runner) {
  formRunners().insert(formName, std::move(runner));
}

void QtPlatform::showModal(Form& form) {
  const auto runner = formRunners().constFind(form.Name());
  if (runner != formRunners().constEnd()) {
    form.Show();
    (*runner)(form, dialogParent());
    form.Hide();
    return;
  }
  form.Show();
  FormDialog dialog(form, dialogParent());
  if (!dialog.formHidden()) dialog.exec();
  // Closed from its window frame: the form is unloaded as when it hides itself.
  form.Hide();
}

// The date and time to the second, as the language's Now gives them. A load asks for it once a
// record (a date-and-time column's default); the local time is worked out only when the second
// has moved.
double QtPlatform::now() {
  timespec ts{};
  clock_gettime(CLOCK_REALTIME, &ts);
  if (ts.tv_sec != nowSecond_) {
    nowSecond_ = ts.tv_sec;
    nowSerial_ = serialOf(QDateTime::fromSecsSinceEpoch(ts.tv_sec));
  }
  return nowSerial_;
}

QString QtPlatform::clipboardText() { return QGuiApplication::clipboard()->text(); }

void QtPlatform::setClipboardText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

void QtPlatform::processEvents() { QCoreApplication::processEvents(); }

void QtPlatform::sendKeys(const QString& keys, bool wait) {
  QWidget* target = QApplication::focusWidget();
  if (!target) target = QApplication::activeWindow();
  if (!target) return;
  const QPointer<QWidget> guard(target);
  Qt::KeyboardModifiers mods;
  auto send = [&](const KeyStroke& k) {
    if (!guard) return;
    QString text = k.text;
    if ((mods & Qt::ControlModifier) && k.key >= Qt::Key_A && k.key <= Qt::Key_Z)
      text = QString(QChar(char16_t(1 + k.key - Qt::Key_A)));
    else if ((mods & Qt::ShiftModifier) && text.size() == 1)
      text = text.toUpper();
    QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, k.key, mods, text));
    QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, k.key, mods, text));
    mods = {};
  };
  for (qsizetype i = 0; i < keys.size(); ++i) {
    const QChar c = keys[i];
    if (c == u'+') {
      mods |= Qt::ShiftModifier;
    } else if (c == u'^') {
      mods |= Qt::ControlModifier;
    } else if (c == u'%') {
      mods |= Qt::AltModifier;
    } else if (c == u'~') {
      send(*namedKey(QStringLiteral("ENTER")));
    } else if (c == u'{') {
      // "{}}" names the closing brace itself.
      const qsizetype close = keys.indexOf(u'}', i + 2);
      if (close < 0) break;
      const QString inner = keys.mid(i + 1, close - i - 1);
      const qsizetype space = inner.lastIndexOf(u' ');
      int repeat = 1;
      QString name = inner;
      if (space > 0) {
        bool ok = false;
        const int n = inner.mid(space + 1).toInt(&ok);
        if (ok) {
          repeat = n;
          name = inner.left(space);
        }
      }
      const auto k = namedKey(name);
      const Qt::KeyboardModifiers held = mods;
      for (int r = 0; k && r < repeat; ++r) {
        mods = held;
        send(*k);
      }
      mods = {};
      i = close;
    } else {
      send(plainKey(c));
    }
  }
  if (wait) QCoreApplication::processEvents();
}

double QtPlatform::textWidth(const Font& font, const QString& text) {
  return QFontMetricsF(toQFont(font)).horizontalAdvance(text) * TwipsPerPixel;
}

double QtPlatform::textHeight(const Font& font) { return QFontMetricsF(toQFont(font)).height() * TwipsPerPixel; }

void QtPlatform::setMousePointer(MousePointer pointer) {
  // One override at most, so that a pointer put back once is really back.
  const bool wantHourglass = pointer == MousePointer::Hourglass;
  if (wantHourglass == hourglass_) return;
  if (wantHourglass)
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QGuiApplication::restoreOverrideCursor();
  hourglass_ = wantHourglass;
}

QString QtPlatform::machineName() { return QSysInfo::machineHostName(); }

QString QtPlatform::applicationFolder() { return QCoreApplication::applicationDirPath(); }

QString QtPlatform::temporaryFolder() { return QDir::tempPath(); }

bool QtPlatform::openInViewer(const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }

QtPlatform& installQtPlatform() {
  static QtPlatform instance;
  setPlatform(&instance);
  return instance;
}

}  // namespace tq7
