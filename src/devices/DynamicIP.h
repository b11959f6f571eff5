#pragma once
// The public address tracker: for a machine on a line whose public address changes. Each round
// fetches a page from an echo service, picks the machine's address out of it, registers that
// address under a customer code and reads back the addresses of all the customer's machines.
// Rounds run by timer while StartAction holds; three labels and a progress bar show how it goes.
#include "companion/FileHelper.h"
#include "companion/StandardHelper.h"
#include "devices/HttpTransfer.h"
#include "frame/Control.h"

#include <QByteArray>
#include <QVariant>
#include <memory>

namespace tq7 {

class DynamicIPEvents {
 public:
  virtual ~DynamicIPEvents() = default;
  // Raised every round that finds an address, and every round that reads a list: the names say
  // change, but no comparison is made.
  virtual void WANIPChange(const QString& WANIP) { (void)WANIP; }
  virtual void ALLIPChange(const QString& ALLIP) { (void)ALLIP; }
};

class DynamicIP : public Control {
 public:
  // Without transfers of its own the tracker uses the real ones (QtHttpTransfer).
  explicit DynamicIP(std::unique_ptr<HttpTransfer> inet1 = nullptr, std::unique_ptr<HttpTransfer> inet2 = nullptr);
  ~DynamicIP() override;

  void setListener(DynamicIPEvents* l) { listener_ = l; }

  // Public variables.
  QString ALLIP;          // NAME=ADDRESS,NAME=ADDRESS
  QString SourceURL;      // the echo page
  int32_t Refresh = 0;    // milliseconds between rounds
  QString INIFileName;
  QString ComputerName;
  QString CustomerCode;
  QString CustomerPassword;
  QString WANIP;          // the last public address found
  QString KeywordGET;     // the text of the echo page after which the address stands
  QString UpdateURLPrefix, UpdateURLSuffix;
  QString UpdateURLEmail;
  QString UpdateURL;      // the registration request last built

  QVariant StartAction();
  QVariant StopAction();
  void LoadINI();
  QString GETAllTextFile(const QVariant& iTextFile);
  QString GETRemoteDynamicIP(const QString& ServerUNCName);

  // The registration service: the request is this, then "/updateip.asp?..." with the values.
  const QString& RegistrationEndpoint() const { return endpoint_; }
  void setRegistrationEndpoint(const QString& url) { endpoint_ = url; }
  static QString DefaultRegistrationEndpoint() { return QStringLiteral("http://www.tq7dynamicip.com"); }
  // The echo page used when the settings file names none; its page reads "Current IP Address: ...".
  static QString DefaultSourceURL() { return QStringLiteral("http://checkip.dyndns.org/"); }

  HttpTransfer& Inet1() { return *inet1_; }
  HttpTransfer& Inet2() { return *inet2_; }
  const QString& TextFile1() const { return textFile1_; }
  const QString& TextFile2() const { return textFile2_; }

  // Children, in the order the host stacks them.
  Label Label1{QStringLiteral("Label1")};  // the status line
  Label Label2{QStringLiteral("Label2")};  // the transfer line
  Label Label3{QStringLiteral("Label3")};  // the source address
  ProgressBar ProgressBar1{QStringLiteral("ProgressBar1")};
  Button btnStartDL{QStringLiteral("btnStartDL")};
  Button Command1{QStringLiteral("Command1")};
  Timer Timer1{QStringLiteral("Timer1")};  // the transfer line, every second
  Timer Timer2{QStringLiteral("Timer2")};  // the rounds, every Refresh milliseconds

 protected:
  void onResize() override;

 private:
  void StartFetch();
  void Timer1_Timer();
  void Timer2_Timer();
  void Inet1_StateChanged(int16_t State);
  void Inet2_StateChanged(int16_t State);
  // Waits for the whole answer, letting messages through, and pulls it into buffer.
  void pullResponse(HttpTransfer& inet, QByteArray& buffer, bool showProgress);
  // Replaces file by the bytes of buffer, and empties the buffer.
  void saveResponse(const QString& file, QByteArray& buffer);
  QString readINI(const QString& key);

  StandardHelper& standard();
  FileHelper& files();

  std::unique_ptr<HttpTransfer> inet1_, inet2_;
  std::unique_ptr<StandardHelper> standard_;
  std::unique_ptr<FileHelper> files_;
  DynamicIPEvents* listener_ = nullptr;
  QString endpoint_ = DefaultRegistrationEndpoint();
  bool Armed = false;
  QString textFile1_, textFile2_;
  QByteArray ResponseBytes1, ResponseBytes2;
  int32_t LastTick = 0;
  int32_t LastBytes = 0;
  bool inet1Busy_ = false, inet2Busy_ = false;  // turn away a second entry while a handler waits
};

}  // namespace tq7
