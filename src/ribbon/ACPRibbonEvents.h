#pragma once
// The ribbon's events, in their order. Raised synchronously; no listener, no call.
#include <QString>

namespace tq7 {

class ACPRibbonEvents {
 public:
  virtual ~ACPRibbonEvents() = default;
  virtual void TabClick(const QString& ID, const QString& Caption) { (void)ID, (void)Caption; }
  virtual void CatClick(const QString& ID, const QString& Caption) { (void)ID, (void)Caption; }
  virtual void ButtonClick(const QString& ID, const QString& Caption) { (void)ID, (void)Caption; }
};

}  // namespace tq7
