#pragma once
// The panel a grid drops down for a month-and-year or quarter-and-year cell: a year box between
// a previous and a next button, above a list of months or quarters. The year on show is EYear
// plus StandardHelper::YearOffset; the control does no era arithmetic of its own. Nothing is
// persisted.
#include "companion/StandardHelper.h"
#include "frame/Control.h"

#include <QVariant>
#include <cstdint>

namespace tq7 {

class MonthYearViewEvents {
 public:
  virtual ~MonthYearViewEvents() = default;
  virtual void Resize() {}
  // Enter or Escape on the list or on either button; no other key is passed on.
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode; (void)Shift; }
  // A double click on a row of the list.
  virtual void MonthClick(int16_t EMonth, int16_t EYear) { (void)EMonth; (void)EYear; }
};

class MonthYearView : public Control {
 public:
  static constexpr double FixedWidth = 2000;

  MonthYearView();
  ~MonthYearView() override;

  void setListener(MonthYearViewEvents* l) { listener_ = l; }
  // The owner's language: the month names of the list and of GETDate follow it.
  void setLanguageID(int16_t id) { Control::setLanguageID(id); }

  // Month 1 to 12 (quarter 1 to 4 in the quarter styles). Another value is ignored; a value
  // taken moves the list's selection to its row.
  int16_t EMonth() const { return EMonth_; }
  void setEMonth(int16_t v);
  // Year 1 to 9999, shown in Text1 with the offset in every style. Another value is ignored.
  int16_t EYear() const { return EYear_; }
  void setEYear(int16_t v);
  // 0, 1 months (1 shows the year without the offset); 2 Thai quarters, 3 English quarters.
  int16_t Style() const { return Style_; }
  void setStyle(int16_t v);
  // Free text held for the owner.
  const QString& Text() const { return Text_; }
  void setText(const QString& v);

  // The first day of EMonth in EYear. Writing takes month and year from the date and leaves
  // what is shown as it is.
  double Value() const;
  void setValue(double v);

  // Fills the list anew for the style, shows the year, selects the row of EMonth.
  void DrawStyle();
  // The selected row's text, a blank, and the text of Text1.
  QString FullText() const;
  // The first of the month read back through the date reading: "1/", the short month name, "/",
  // and the shown year.
  double GETDate() const;
  // Month, year, the list's selection and Text1 from a date; returns an empty date.
  double SetDate(const QVariant& iDate);

  // Handlers the host calls, by the pieces' names.
  void cmdNext_Click();
  void cmdPrevious_Click();
  void cmdNext_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void cmdPrevious_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void List1_Click();
  void List1_DblClick();
  void List1_KeyDown(int16_t& KeyCode, int16_t& Shift);

  // A change of List1's selection, from the host or from here, is the list's click.
  void widgetChanged(Widget& w) override;

  // Pieces, in stacking order.
  TextBox Text1{QStringLiteral("Text1")};
  Button cmdPrevious{QStringLiteral("cmdPrevious")};
  Button cmdNext{QStringLiteral("cmdNext")};
  ListBox List1{QStringLiteral("List1")};

 protected:
  void onResize() override;

 private:
  double tableHeight() const;
  void showYear(int16_t year);
  void passKey(int16_t& KeyCode, int16_t& Shift);

  StandardHelper helper_;
  MonthYearViewEvents* listener_ = nullptr;
  int16_t EMonth_ = 1;
  int16_t EYear_ = 1;
  int16_t Style_ = 0;
  QString Text_;
  int lastListIndex_ = -1;
};

}  // namespace tq7
