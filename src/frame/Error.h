#pragma once
// Failure style of the library: lower layers throw tq7::Error; a control runs each guarded
// step through step(), which swallows that step's failure so the next statement still runs.
#include <QString>
#include <cstdint>
#include <exception>
#include <utility>

namespace tq7 {

// The familiar runtime numbers; database failures carry record-set style numbers.
namespace err {
constexpr int32_t Overflow = 6;
constexpr int32_t SubscriptOutOfRange = 9;
constexpr int32_t TypeMismatch = 13;
constexpr int32_t InvalidProcedureCall = 5;
constexpr int32_t FileNotFound = 53;
constexpr int32_t PathFileAccess = 75;
constexpr int32_t PathNotFound = 76;
constexpr int32_t ObjectRequired = 424;
constexpr int32_t ElementNotFound = 35601;
// Record-set style numbers.
constexpr int32_t DbUnspecified = static_cast<int32_t>(0x80004005u);
constexpr int32_t DbTimeout = static_cast<int32_t>(0x80040E31u);
constexpr int32_t DbSyntax = static_cast<int32_t>(0x80040E14u);
constexpr int32_t DbNoSuchTable = static_cast<int32_t>(0x80040E37u);
constexpr int32_t DbConnectionClosed = static_cast<int32_t>(0x800A0E78u);
constexpr int32_t DbEofOrBof = static_cast<int32_t>(0x800A0BCDu);
constexpr int32_t DbItemNotFound = static_cast<int32_t>(0x800A0CC1u);
constexpr int32_t DbBadArgument = static_cast<int32_t>(0x800A0BB9u);
constexpr int32_t DbObjectOpen = static_cast<int32_t>(0x800A0E79u);
constexpr int32_t DbProviderNotFound = static_cast<int32_t>(0x800A0E7Au);
}  // namespace err

struct Error {
  int32_t number = 0;
  QString description;
};

// Runs one guarded step. Answers 0 when it went through, else the number of its failure.
// Anything thrown from below is a failure of this step alone.
template <class F>
int32_t step(F&& f) noexcept {
  try {
    std::forward<F>(f)();
    return 0;
  } catch (const Error& e) {
    return e.number ? e.number : err::DbUnspecified;
  } catch (const std::exception&) {
    return err::InvalidProcedureCall;
  } catch (...) {
    return err::InvalidProcedureCall;
  }
}

// A run of guarded steps that remembers the number of the last failure, as a load must.
class StepRun {
 public:
  template <class F>
  bool operator()(F&& f) noexcept {
    const int32_t n = step(std::forward<F>(f));
    if (n) lastError_ = n;
    return n == 0;
  }
  int32_t lastError() const { return lastError_; }

 private:
  int32_t lastError_ = 0;
};

}  // namespace tq7
