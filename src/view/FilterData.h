#pragma once
// The filter dialog of the browse views: the user picks a field, an operator and a value, and the
// dialog hands back one condition of SQL text in txtResult, "RESET", or nothing (cancelled).
//
// As on the classic form, setting a box's text runs its Change handler and choosing a list entry
// runs its Click handler, whoever does it (the user, the host, the form's own code), so a host
// and a scripted test drive the form the same way.
#include "companion/StandardHelper.h"
#include "frame/Widget.h"

#include <QString>
#include <cstdint>

namespace tq7 {

class FilterData : public Form, private WidgetObserver {
 public:
  FilterData();
  ~FilterData() override;

  Button cmdReset{QStringLiteral("cmdReset")};
  ListBox lstFieldName{QStringLiteral("lstFieldName")};  // field names, hidden, parallel to lstFields
  ListBox lstType{QStringLiteral("lstType")};            // type codes, hidden, parallel to lstFields
  TextBox txtResult{QStringLiteral("txtResult")};        // the dialog's result, hidden
  Button cmdSearch{QStringLiteral("cmdSearch")};
  Button cmdCancel{QStringLiteral("cmdCancel")};
  TextBox txtValue{QStringLiteral("txtValue")};
  ListBox lstOperator{QStringLiteral("lstOperator")};
  ListBox lstFields{QStringLiteral("lstFields")};
  Label lblError{QStringLiteral("lblError")};
  Label Frame1{QStringLiteral("Frame1")};
  Label lblFields{QStringLiteral("lblFields")};
  Label lblCondition{QStringLiteral("lblCondition")};
  Label lblValue{QStringLiteral("lblValue")};
  Label lblLegend{QStringLiteral("lblLegend")};

  // The field chosen when the form comes up; the caller sets it from the view's active column.
  int32_t DefaultIndex = 0;

  // Fills the three parallel lists from a view's comma lists.
  void setLists(const QString& FieldList, const QString& LabelList, const QString& TypeList);

  void Form_Load();
  // When the form comes up: the default field, the first operator, the value box selected.
  void Form_Activate();
  void Form_Unload();
  void lstFields_Click();
  void lstOperator_Click();
  void txtValue_Change();
  void txtValue_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void cmdCancel_Click();
  void cmdReset_Click();
  void cmdSearch_Click();

  // The type code of the chosen field (0 when none is chosen).
  int16_t chosenType() const;

 private:
  void widgetChanged(Widget& w) override;
  void checkValue();
  void buildCondition();

  StandardHelper helper_;
  QString seenValue_;
  int seenField_ = -1, seenOperator_ = -1;
};

}  // namespace tq7
