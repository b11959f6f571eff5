#include "controls/MonthYearView.h"

#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/GridSurface.h"
#include "frame/Platform.h"

#include <QDate>
#include <QDateTime>
#include <cstdlib>

namespace tq7 {

namespace {
constexpr double kBarHeight = 300;  // the year line above the list
constexpr double kMonthListHeight = 2370, kMonthControlHeight = 2670;
constexpr double kQuarterListHeight = 810, kQuarterControlHeight = 1113;
}  // namespace

MonthYearView::MonthYearView() : Control(QStringLiteral("MonthYearView")) {
  addChild(Text1);
  addChild(cmdPrevious);
  addChild(cmdNext);
  addChild(List1);
  cmdPrevious.Move(0, 0, 330, kBarHeight);
  cmdPrevious.setCaption(QStringLiteral("<"));
  Text1.Move(330, 0, FixedWidth - 660, kBarHeight);
  Text1.setAlignment(2);
  cmdNext.Move(FixedWidth - 330, 0, 330, kBarHeight);
  cmdNext.setCaption(QStringLiteral(">"));
  List1.Move(0, kBarHeight, FixedWidth, kMonthListHeight);
  cmdPrevious.onClick = [this] { cmdPrevious_Click(); };
  cmdNext.onClick = [this] { cmdNext_Click(); };

  const double now = platform().now();
  step([&] { EMonth_ = int16_t(vb::serialToDate(now).month()); });
  step([&] { EYear_ = int16_t(vb::serialToDate(now).year()); });
  Style_ = 0;
  Text1.setText(QString::number(EYear_ + StandardHelper::YearOffset()));
  DrawStyle();
  // In January the list starts on December, and its click makes EMonth 12: the start-up has
  // always done so.
  if (EMonth_ == 1)
    step([&] { List1.setListIndex(11); });
  else
    step([&] { List1.setListIndex(EMonth_ - 1); });
}

MonthYearView::~MonthYearView() = default;

double MonthYearView::tableHeight() const { return Style_ < 2 ? kMonthControlHeight : kQuarterControlHeight; }

void MonthYearView::onResize() {
  if (Width() != FixedWidth || Height() != tableHeight()) setSize(FixedWidth, tableHeight());
  if (listener_) listener_->Resize();
}

void MonthYearView::showYear(int16_t year) { Text1.setText(QString::number(year + StandardHelper::YearOffset())); }

void MonthYearView::setEMonth(int16_t v) {
  if (v < 1 || v > 12) return;
  EMonth_ = v;
  step([&] { List1.setListIndex(v - 1); });
  notifyChanged();
}

void MonthYearView::setEYear(int16_t v) {
  if (v < 1 || v > 9999) return;
  EYear_ = v;
  showYear(v);
}

void MonthYearView::setStyle(int16_t v) {
  if (v >= 0 && v <= 3) Style_ = v;
  DrawStyle();
}

void MonthYearView::setText(const QString& v) { Text_ = v; }

double MonthYearView::Value() const {
  double v = 0;
  step([&] { v = vb::DateSerial(EYear_, EMonth_, 1); });
  return v;
}

void MonthYearView::setValue(double v) {
  step([&] { EMonth_ = int16_t(vb::serialToDate(v).month()); });
  step([&] { EYear_ = int16_t(vb::serialToDate(v).year()); });
}

void MonthYearView::DrawStyle() {
  if (Style_ == 1)
    Text1.setText(QString::number(EYear_));
  else
    showYear(EYear_);
  List1.Clear();
  if (Style_ < 2) {
    for (int16_t m = 1; m <= 12; ++m) List1.AddItem(helper_.MonthText(m, true, LanguageID()));
    List1.setHeight(kMonthListHeight);
    setHeight(kMonthControlHeight);
  } else {
    // The fourth quarter is cut to the third here.
    if (EMonth_ > 3) EMonth_ = 3;
    static const char* const thai = "ไตรมาสที่ ";
    static const char* const english = "Quarter ";
    for (int q = 1; q <= 4; ++q)
      List1.AddItem(QString::fromUtf8(Style_ == 2 ? thai : english) + QString::number(q));
    List1.setHeight(kQuarterListHeight);
    setHeight(kQuarterControlHeight);
  }
  step([&] { List1.setListIndex(std::abs(EMonth_ - 1)); });
}

QString MonthYearView::FullText() const { return List1.List(List1.ListIndex()) + QLatin1Char(' ') + Text1.Text(); }

double MonthYearView::GETDate() const {
  double v = 0;
  step([&] {
    v = vb::CDate(QStringLiteral("1/") + helper_.MonthText(EMonth_, false, LanguageID()) + QLatin1Char('/') +
                  QString::number(EYear_ + StandardHelper::YearOffset()));
  });
  return v;
}

double MonthYearView::SetDate(const QVariant& iDate) {
  double serial = 0;
  const int32_t failed = step([&] {
    switch (iDate.typeId()) {
      case QMetaType::QDate: serial = vb::dateToSerial(iDate.toDate()); break;
      case QMetaType::QDateTime: serial = vb::dateTimeToSerial(iDate.toDateTime()); break;
      case QMetaType::QString: serial = vb::CDate(iDate.toString()); break;
      default: {
        bool ok = false;
        serial = iDate.toDouble(&ok);
        if (!ok) throw Error{err::TypeMismatch, {}};
      }
    }
  });
  if (failed) return 0;
  step([&] { EMonth_ = int16_t(vb::serialToDate(serial).month()); });
  step([&] { EYear_ = int16_t(vb::serialToDate(serial).year()); });
  step([&] { List1.setListIndex(EMonth_ - 1); });
  showYear(EYear_);
  return 0;
}

void MonthYearView::cmdNext_Click() {
  EYear_ = int16_t(EYear_ + 1);
  if (EYear_ > 9999) EYear_ = 1;
  showYear(EYear_);
}

void MonthYearView::cmdPrevious_Click() {
  EYear_ = int16_t(EYear_ - 1);
  if (EYear_ == 0) EYear_ = 9999;
  showYear(EYear_);
}

void MonthYearView::passKey(int16_t& KeyCode, int16_t& Shift) {
  if (KeyCode == key::Return || KeyCode == key::Escape) {
    if (listener_) listener_->KeyDown(KeyCode, Shift);
  }
}

void MonthYearView::cmdNext_KeyDown(int16_t& KeyCode, int16_t& Shift) { passKey(KeyCode, Shift); }
void MonthYearView::cmdPrevious_KeyDown(int16_t& KeyCode, int16_t& Shift) { passKey(KeyCode, Shift); }
void MonthYearView::List1_KeyDown(int16_t& KeyCode, int16_t& Shift) { passKey(KeyCode, Shift); }

void MonthYearView::List1_Click() {
  lastListIndex_ = List1.ListIndex();
  EMonth_ = int16_t(List1.ListIndex() + 1);
  notifyChanged();
}

void MonthYearView::List1_DblClick() {
  if (listener_) listener_->MonthClick(EMonth_, EYear_);
}

void MonthYearView::widgetChanged(Widget& w) {
  if (&w == &List1 && List1.ListIndex() != lastListIndex_) {
    lastListIndex_ = List1.ListIndex();
    if (lastListIndex_ >= 0) List1_Click();
  }
  Control::widgetChanged(w);
}

}  // namespace tq7
