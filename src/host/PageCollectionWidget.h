#pragma once
// The page navigator as a QWidget: the two tool bars and the two page boxes mirrored from the
// core, its fixed height kept, a key on it relayed to a listener and as a Qt signal.
#include "controls/PageCollection.h"
#include "host/WidgetMirror.h"

#include <QWidget>

class QLineEdit;
class QToolBar;

namespace tq7 {

class PageCollectionWidget : public QWidget, private PageCollectionEvents {
  Q_OBJECT
 public:
  explicit PageCollectionWidget(QWidget* parent = nullptr);
  ~PageCollectionWidget() override;

  PageCollection& pages() { return pages_; }
  void setListener(PageCollectionEvents* l) { appListener_ = l; }
  void syncNow();

  QLineEdit* currentBox() const { return current_; }
  QLineEdit* totalBox() const { return total_; }
  QToolBar* leftBar() const { return left_; }
  QToolBar* rightBar() const { return right_; }

  QSize sizeHint() const override;

 signals:
  void buttonNextClick();
  void buttonBackClick();
  void buttonFirstClick();
  void buttonLastClick();
  void changeCurrent();
  void keyDown(int16_t& KeyCode, int16_t& Shift);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void ButtonNextClick() override;
  void ButtonBackClick() override;
  void ButtonFirstClick() override;
  void ButtonLastClick() override;
  void ChangeCurrent() override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;

  PageCollection pages_;
  WidgetMirror mirror_;
  PageCollectionEvents* appListener_ = nullptr;
  QToolBar* left_ = nullptr;
  QToolBar* right_ = nullptr;
  QLineEdit* current_ = nullptr;
  QLineEdit* total_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
