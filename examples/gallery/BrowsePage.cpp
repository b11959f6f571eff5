// The browse page: a clerk pages through 100,000 sales, filters and searches them, marks one or
// many, and the status line tells each command the view raised with its result text.
#include "Pages.h"
#include "SampleDatabase.h"

#include "host/DataViewWidget.h"

#include <QLabel>
#include <QVBoxLayout>

namespace gallery {

namespace {

// Tells the application's side of each command: the event, the command number and the keys.
class CommandLog : public tq7::DataViewEvents {
 public:
  CommandLog(tq7::DataView& view, QLabel& status) : view_(view), status_(status) {}
  void AddCommandClick() override { tell("AddCommandClick"); }
  void EditCommandClick() override { tell("EditCommandClick"); }
  void DeleteCommandClick() override { tell("DeleteCommandClick"); }
  void SelectCommandClick() override { tell("SelectCommandClick"); }
  void OpenCommandClick() override { tell("OpenCommandClick"); }
  void CancelCommandClick() override { tell("CancelCommandClick"); }
  void PrintCommandClick() override { tell("PrintCommandClick"); }
  void ExportCommandClick() override { tell("ExportCommandClick"); }
  void RecordCountChange() override {
    status_.setText(QString::fromUtf8("พบ %1 รายการ / %1 rows").arg(view_.RecordCount));
  }

 private:
  void tell(const char* event) {
    status_.setText(QStringLiteral("%1   iActionCommandID = %2   TextResult = \"%3\"")
                        .arg(QString::fromLatin1(event))
                        .arg(view_.iActionCommandID)
                        .arg(view_.TextResult));
  }
  tq7::DataView& view_;
  QLabel& status_;
};

class BrowsePage : public QWidget {
 public:
  BrowsePage(const SampleDatabase& db, QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    view_ = new tq7::DataViewWidget(this);
    view_->setObjectName(QStringLiteral("dvwBrowse"));
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("lblBrowseStatus"));
    status_->setMinimumHeight(28);
    status_->setFrameShape(QFrame::StyledPanel);
    layout->addWidget(view_, 1);
    layout->addWidget(status_);
    log_ = std::make_unique<CommandLog>(view_->view(), *status_);
    view_->setListener(log_.get());

    tq7::DataView& v = view_->view();
    v.EscapeAction = true;
    // The search reads the same sales, biggest amounts first.
    v.AddExtraSearch(QString::fromUtf8("ค้นหาการขาย"), QStringLiteral("SaleID"), {}, {}, {}, {},
                     QStringLiteral("BrowseSales ORDER BY Amount DESC"));
    v.SelectDataList8(QString::fromUtf8("การขาย"), QStringLiteral("SaleID"),
                      QStringLiteral("SaleID,Customer,SaleDate,Amount,Paid,Channel"),
                      QString::fromUtf8("เลขที่,ลูกค้า / Customer,วันที่,ยอดเงิน,ชำระ,ช่องทาง;หน้าร้าน;ออนไลน์;โทรศัพท์"),
                      QStringLiteral("900,4200,1500,1800,900,1500"), QStringLiteral("2,0,6,1,4,13"),
                      QStringLiteral("BrowseSales"), db.connectionString(), 1, 1, 1, 1, 1, 0, 0, 0, false, false, 0,
                      0, 0, 0, true, 0, 0, {}, {}, {}, {}, {}, 100, 0);
  }

 private:
  tq7::DataViewWidget* view_ = nullptr;
  QLabel* status_ = nullptr;
  std::unique_ptr<CommandLog> log_;
};

}  // namespace

QWidget* makeBrowsePage(const SampleDatabase& db, QWidget* parent) { return new BrowsePage(db, parent); }

}  // namespace gallery
