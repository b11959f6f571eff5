#pragma once
// The filter dialog of the browse views on the screen: the core FilterData form's boxes as Qt
// widgets at the form's places, a person's choices and keys handed to the form's handlers, and
// the form's answers read back after each of them. It ends when the form hides itself.
#include "view/FilterData.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tq7 {

class FilterDataDialog : public QDialog {
  Q_OBJECT
 public:
  FilterDataDialog(FilterData& form, QWidget* parent = nullptr);

  // Runs the form modally; the QtPlatform runner for forms named "FilterData".
  static void run(Form& form, QWidget* parent);

  QLineEdit* valueBox() const { return value_; }
  QListWidget* fieldList() const { return fields_; }
  QListWidget* operatorList() const { return operators_; }
  QPushButton* searchButton() const { return search_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;
  void reject() override;

 private:
  // Core to screen.
  void pull();
  void place(QWidget* w, const Widget& state);

  FilterData& form_;
  QLineEdit* value_ = nullptr;
  QListWidget* fields_ = nullptr;
  QListWidget* operators_ = nullptr;
  QPushButton* search_ = nullptr;
  QPushButton* reset_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QLabel* error_ = nullptr;
  QLabel* frame_ = nullptr;
  QList<QPair<QLabel*, Label*>> labels_;
  bool pulling_ = false;
};

}  // namespace tq7
