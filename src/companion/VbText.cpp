#include "companion/VbText.h"

#include "frame/Error.h"
#include "frame/Platform.h"

#include <QByteArray>
#include <QRegularExpression>
#include <atomic>
#include <charconv>
#include <string_view>
#include <cstring>
#include <cmath>
#include <limits>
#include <string>

namespace tq7::vb {

namespace {

[[noreturn]] void fail(int32_t number) {
  switch (number) {
    case err::Overflow:
      throw Error{number, QStringLiteral("Overflow")};
    case err::TypeMismatch:
      throw Error{number, QStringLiteral("Type mismatch")};
    default:
      throw Error{number, QStringLiteral("Invalid procedure call or argument")};
  }
}

Qt::CaseSensitivity cs(Compare c) { return c == Compare::Text ? Qt::CaseInsensitive : Qt::CaseSensitive; }

bool isAsciiDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool allDigits(const QString& s) {
  if (s.isEmpty()) return false;
  for (QChar c : s)
    if (!isAsciiDigit(c)) return false;
  return true;
}

// ---- decimal digits of a double ----------------------------------------------------------------
// A double as it reads: the shortest digits that give it back, value = 0.digits x 10^point.
// Up to 17 significant digits and a carry: kept inline, so that formatting allocates nothing.
class DigitBuf {
 public:
  size_t size() const { return n_; }
  bool empty() const { return n_ == 0; }
  char& operator[](size_t i) { return buf_[i]; }
  char operator[](size_t i) const { return buf_[i]; }
  char back() const { return buf_[n_ - 1]; }
  void push_back(char c) { buf_[n_++] = c; }
  void pop_back() { --n_; }
  void resize(size_t n) { n_ = n; }
  void prepend(char c) {
    std::memmove(buf_ + 1, buf_, n_);
    buf_[0] = c;
    ++n_;
  }
  const char* data() const { return buf_; }
  operator std::string_view() const { return {buf_, n_}; }

 private:
  char buf_[40];
  size_t n_ = 0;
};

struct Digits {
  bool negative = false;
  DigitBuf digits;  // no leading zeros; empty for zero
  int point = 0;
};

// A value with a short decimal form, as amounts, prices and quantities are: below 1e9 with at
// most six decimals. The fewest decimals k whose nearest whole m = |v| x 10^k divides back to
// |v| exactly give the shortest digits; below 1e9 a step of 1e-6 is wider than the double's own
// spacing, so that m is the only candidate of its length and no nearer one exists.
bool shortDigits(double v, Digits& d) {
  const double a = std::fabs(v);
  if (!(a < 1e9)) return false;
  double scale = 1;
  for (int k = 0; k <= 6; ++k, scale *= 10) {
    const double m = std::nearbyint(a * scale);
    if (m / scale != a) continue;
    char rev[20];
    int n = 0;
    for (uint64_t w = uint64_t(m); w; w /= 10) rev[n++] = char('0' + w % 10);
    d.negative = v < 0;
    d.point = n - k;
    int skip = 0;  // trailing zeros
    while (skip < n && rev[skip] == '0') ++skip;
    for (int i = n - 1; i >= skip; --i) d.digits.push_back(rev[i]);
    return true;
  }
  return false;
}

// The digits of v as the shortest scientific form gives them (precision -1), or kept to
// precision + 1 significant digits, rounded on the exact binary value.
Digits scientificDigits(double v, int precision) {
  Digits d;
  char buf[64];
  const auto res = precision < 0 ? std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific)
                                 : std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, precision);
  const char* p = buf;
  if (*p == '-') {
    d.negative = true;
    ++p;
  }
  const char* e = p;
  while (e < res.ptr && *e != 'e') ++e;
  for (const char* k = p; k < e; ++k)
    if (*k != '.') d.digits.push_back(*k);
  int exp10 = 0;
  const char* x = e + 1;
  if (x < res.ptr && *x == '+') ++x;
  std::from_chars(x, res.ptr, exp10);
  d.point = exp10 + 1;
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  return d;
}

Digits digitsOf(double v) {
  Digits d;
  if (v == 0.0 || !std::isfinite(v)) return d;
  if (shortDigits(v, d)) return d;
  return scientificDigits(v, -1);
}

// Rounds to `decimals` places, halves away from zero (the sign is apart, so on the magnitude up).
Digits roundDigits(Digits d, int decimals) {
  const long keep = long(d.point) + decimals;
  if (keep >= long(d.digits.size())) return d;
  if (keep < 0) return Digits{d.negative, {}, 0};
  const bool up = d.digits[size_t(keep)] >= '5';
  d.digits.resize(size_t(keep));
  if (up) {
    long i = keep - 1;
    while (i >= 0 && d.digits[size_t(i)] == '9') d.digits[size_t(i--)] = '0';
    if (i >= 0) {
      ++d.digits[size_t(i)];
    } else {
      d.digits.prepend('1');
      ++d.point;
    }
  }
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  if (d.digits.empty()) d.point = 0;
  return d;
}

double valueOf(const Digits& d) {
  if (d.digits.empty()) return 0.0;
  std::string s = d.negative ? "-0." : "0.";
  s += d.digits;
  s += 'e';
  s += std::to_string(d.point);
  double v = 0;
  std::from_chars(s.data(), s.data() + s.size(), v);
  return v;
}

// Reads a plain ASCII number text ("-12.5e3"); error 6 beyond the double range.
double readAscii(const std::string& s) {
  double v = 0;
  const auto res = std::from_chars(s.data(), s.data() + s.size(), v);
  if (res.ec == std::errc::result_out_of_range) {
    // from_chars reports underflow this way too: a tiny value is a subnormal or 0, not a failure.
    const size_t e = s.find_first_of("eE");
    if (e != std::string::npos && s.find('-', e) != std::string::npos) {
      bool ok = false;
      const double tiny = QByteArray::fromStdString(s).toDouble(&ok);
      return ok ? tiny : 0.0;
    }
    fail(err::Overflow);
  }
  if (res.ec != std::errc()) return 0.0;
  if (!std::isfinite(v)) fail(err::Overflow);
  return v;
}

// &H / &O digits to the classic value: short enough for 16 bits reads as a 16-bit integer
// (so &HFFFF is -1), else as a 32-bit one.
bool radixValue(const QString& digits, int radix, double& out) {
  if (digits.isEmpty()) return false;
  uint64_t v = 0;
  for (QChar c : digits) {
    if (!(isAsciiDigit(c) || (radix == 16 && QStringLiteral("abcdefABCDEF").contains(c)))) return false;
    const int d = QString(c).toInt(nullptr, 16);
    if (d >= radix) return false;
    v = v * uint64_t(radix) + uint64_t(d);
    if (v > 0xFFFFFFFFull) fail(err::Overflow);
  }
  if (v <= 0xFFFF)
    out = double(int16_t(uint16_t(v)));
  else
    out = double(int32_t(uint32_t(v)));
  return true;
}

bool isBlankOrTab(QChar c) { return c == u' ' || c == u'\t'; }
QString trimBlanksTabs(const QString& s) {
  qsizetype a = 0, b = s.size();
  while (a < b && isBlankOrTab(s[a])) ++a;
  while (b > a && isBlankOrTab(s[b - 1])) --b;
  return s.mid(a, b - a);
}

// The classic numeric text; false when it is none. Overflow throws.
bool parseNumeric(const QString& text, double& out) {
  // The texts the grids keep in their attribute rows ("2", "0", "1234.50", "-3") are read on every
  // row of a load: take them without building anything.
  const qsizetype n = text.size();
  if (n == 0) return false;
  if (n < 32) {
    char buf[32];
    qsizetype i = 0;
    bool plain = true, point = false;
    int digits = 0;
    for (const QChar ch : text) {
      const char16_t u = ch.unicode();
      if (u >= u'0' && u <= u'9') {
        ++digits;
      } else if (u == u'.' && !point) {
        point = true;
      } else if (u == u'-' && i == 0) {
      } else {
        plain = false;
        break;
      }
      buf[i++] = char(u);
    }
    if (plain && digits > 0) {
      const auto [end, ec] = std::from_chars(buf, buf + i, out);
      if (ec == std::errc() && end == buf + i) return true;
    }
  }
  QString t = trimBlanksTabs(text);
  if (t.isEmpty()) return false;
  if (t.size() > 2 && t[0] == u'&') {
    const QChar r = t[1].toUpper();
    if (r == u'H') return radixValue(t.mid(2), 16, out);
    if (r == u'O') return radixValue(t.mid(2), 8, out);
    return false;
  }
  bool negative = false;
  if (t.startsWith(u'(') && t.endsWith(u')')) {
    negative = true;
    t = trimBlanksTabs(t.mid(1, t.size() - 2));
    if (t.isEmpty()) return false;
  }
  if (t[0] == u'+' || t[0] == u'-') {
    negative = negative != (t[0] == u'-');
    t = trimBlanksTabs(t.mid(1));
  } else if (t.endsWith(u'+') || t.endsWith(u'-')) {
    negative = negative != t.endsWith(u'-');
    t = trimBlanksTabs(t.left(t.size() - 1));
  }
  if (t.isEmpty()) return false;
  std::string ascii = negative ? "-" : "";
  qsizetype i = 0;
  int digits = 0;
  // Whole part: digits with "," groups between them.
  while (i < t.size() && (isAsciiDigit(t[i]) || t[i] == u',')) {
    if (t[i] == u',') {
      if (i == 0 || i + 1 >= t.size() || !isAsciiDigit(t[i + 1])) return false;
    } else {
      ascii.push_back(char(t[i].unicode()));
      ++digits;
    }
    ++i;
  }
  if (i < t.size() && t[i] == u'.') {
    ascii.push_back('.');
    ++i;
    while (i < t.size() && isAsciiDigit(t[i])) {
      ascii.push_back(char(t[i++].unicode()));
      ++digits;
    }
  }
  if (digits == 0) return false;
  if (i < t.size() && QStringLiteral("eEdD").contains(t[i])) {
    ascii.push_back('e');
    ++i;
    if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) ascii.push_back(char(t[i++].unicode()));
    int expDigits = 0;
    while (i < t.size() && isAsciiDigit(t[i])) {
      ascii.push_back(char(t[i++].unicode()));
      ++expDigits;
    }
    if (expDigits == 0) return false;
  }
  if (i != t.size()) return false;
  out = readAscii(ascii);
  return true;
}

// ---- dates -------------------------------------------------------------------------------------

const QDate& epoch() {
  static const QDate d(1899, 12, 30);
  return d;
}

std::atomic<int16_t> g_yearOffset{543};

const char16_t* const kThaiLong[12] = {u"มกราคม", u"กุมภาพันธ์", u"มีนาคม",   u"เมษายน",  u"พฤษภาคม",  u"มิถุนายน",
                                       u"กรกฎาคม", u"สิงหาคม",   u"กันยายน", u"ตุลาคม", u"พฤศจิกายน", u"ธันวาคม"};
const char16_t* const kThaiShort[12] = {u"ม.ค.", u"ก.พ.", u"มี.ค.", u"เม.ย.", u"พ.ค.", u"มิ.ย.",
                                        u"ก.ค.", u"ส.ค.", u"ก.ย.",  u"ต.ค.",  u"พ.ย.", u"ธ.ค."};
const char* const kEnglishLong[12] = {"January", "February", "March",     "April",   "May",      "June",
                                      "July",    "August",   "September", "October", "November", "December"};

// A month typed by name, in any of the four forms, case and dots ignored ("ม.ค.", "มค", "Mar.").
int monthByName(const QString& word) {
  auto norm = [](QString s) { return s.remove(u'.').toLower(); };
  const QString w = norm(word);
  if (w.isEmpty()) return 0;
  for (int m = 1; m <= 12; ++m) {
    if (w == norm(thaiMonthName(m, true)) || w == norm(thaiMonthName(m, false)) ||
        w == norm(englishMonthName(m, true)) || w == norm(englishMonthName(m, false)))
      return m;
  }
  return 0;
}

int currentShownYear() { return serialToDate(std::floor(platform().now())).year() + calendarYearOffset(); }

// Two typed digits of a shown year: the year ending so that lies from 80 years before the current
// shown year to 19 after it, as the familiar two-digit window does.
int windowYear(int yy) {
  const int now = currentShownYear();
  int y = (now / 100) * 100 + yy;
  if (y > now + 19) y -= 100;
  if (y < now - 80) y += 100;
  return y;
}

bool shownYear(const QString& piece, int& year) {
  if (!allDigits(piece)) return false;
  if (piece.size() == 4) {
    year = piece.toInt();
    return true;
  }
  if (piece.size() == 2) {
    year = windowYear(piece.toInt());
    return true;
  }
  return false;
}

bool makeDate(int shown, int month, int day, double& serial) {
  const int y = shown - calendarYearOffset();
  if (y < 100 || y > 9999 || !QDate::isValid(y, month, day)) return false;
  serial = dateToSerial(QDate(y, month, day));
  return true;
}

bool parseDatePart(const QString& text, double& serial) {
  const QString s = Trim(text);
  if (s.isEmpty()) return false;
  if (allDigits(s)) {
    int year = 0;
    if (s.size() == 8)
      year = s.mid(4).toInt();
    else if (s.size() == 6)
      year = windowYear(s.mid(4).toInt());
    else if (s.size() == 4)
      year = currentShownYear();
    else
      return false;
    return makeDate(year, s.mid(2, 2).toInt(), s.left(2).toInt(), serial);
  }
  static const QRegularExpression separators(QStringLiteral("[/\\- ]+"));
  QStringList pieces = s.split(separators);
  if (pieces.size() == 1) pieces = s.split(u'.');
  if (pieces.size() < 2 || pieces.size() > 3) return false;
  for (const QString& p : pieces)
    if (p.isEmpty()) return false;
  if (!allDigits(pieces[0]) || pieces[0].size() > 2) return false;
  const int day = pieces[0].toInt();
  int month = 0;
  if (allDigits(pieces[1])) {
    if (pieces[1].size() > 2) return false;
    month = pieces[1].toInt();
  } else {
    month = monthByName(pieces[1]);
  }
  int year = 0;
  if (pieces.size() == 3) {
    if (!shownYear(pieces[2], year)) return false;
  } else {
    year = currentShownYear();
  }
  return makeDate(year, month, day, serial);
}

bool parseTimePart(const QString& text, double& serial) {
  QString s = Trim(text);
  enum { None, Am, Pm, Thai } suffix = None;
  const struct {
    const char16_t* word;
    int kind;
  } suffixes[] = {{u"A.M.", Am}, {u"P.M.", Pm}, {u"AM", Am}, {u"PM", Pm}, {u"น.", Thai}};
  for (const auto& sx : suffixes) {
    const QString w = QString::fromUtf16(sx.word);
    if (s.endsWith(w, Qt::CaseInsensitive)) {
      s = Trim(s.left(s.size() - w.size()));
      suffix = decltype(suffix)(sx.kind);
      break;
    }
  }
  if (s.isEmpty()) return false;
  static const QRegularExpression sep(QStringLiteral("[:.]"));
  const QStringList parts = s.split(sep);
  if (parts.size() > 3 || (parts.size() == 1 && suffix == None)) return false;
  int values[3] = {0, 0, 0};
  for (qsizetype i = 0; i < parts.size(); ++i) {
    if (!allDigits(parts[i]) || parts[i].size() > 2) return false;
    values[i] = parts[i].toInt();
  }
  int h = values[0];
  const int m = values[1], sec = values[2];
  if (suffix == Am || suffix == Pm) {
    if (h < 1 || h > 12) return false;
    if (h == 12) h = 0;
    if (suffix == Pm) h += 12;
  }
  if (h > 23 || m > 59 || sec > 59) return false;
  serial = timeSerial(h, m, sec);
  return true;
}

}  // namespace

// ---- text --------------------------------------------------------------------------------------

QString LTrim(const QString& s) {
  qsizetype a = 0;
  while (a < s.size() && s[a] == u' ') ++a;
  return s.mid(a);
}

QString RTrim(const QString& s) {
  qsizetype b = s.size();
  while (b > 0 && s[b - 1] == u' ') --b;
  return s.left(b);
}

QString Trim(const QString& s) { return LTrim(RTrim(s)); }

QString UCase(const QString& s) { return s.toUpper(); }
QString LCase(const QString& s) { return s.toLower(); }

QString Left(const QString& s, int32_t length) {
  if (length < 0) fail(err::InvalidProcedureCall);
  return s.left(length);
}

QString Right(const QString& s, int32_t length) {
  if (length < 0) fail(err::InvalidProcedureCall);
  return s.right(length);
}

QString Mid(const QString& s, int32_t start) {
  if (start < 1) fail(err::InvalidProcedureCall);
  return start > s.size() ? QString() : s.mid(start - 1);
}

QString Mid(const QString& s, int32_t start, int32_t length) {
  if (start < 1 || length < 0) fail(err::InvalidProcedureCall);
  return start > s.size() ? QString() : s.mid(start - 1, length);
}

QStringList Split(const QString& s, const QString& delimiter, int32_t limit, Compare compare) {
  QStringList out;
  if (s.isEmpty() || limit == 0) return out;
  if (delimiter.isEmpty()) return {s};
  qsizetype from = 0;
  while (limit < 0 || out.size() < limit - 1) {
    const qsizetype at = s.indexOf(delimiter, from, cs(compare));
    if (at < 0) break;
    out.append(s.mid(from, at - from));
    from = at + delimiter.size();
  }
  out.append(s.mid(from));
  return out;
}

int32_t InStr(const QString& s, const QString& find, Compare compare) { return InStr(1, s, find, compare); }

int32_t InStr(int32_t start, const QString& s, const QString& find, Compare compare) {
  if (start < 1) fail(err::InvalidProcedureCall);
  if (s.isEmpty() || start > s.size()) return 0;
  if (find.isEmpty()) return start;
  return int32_t(s.indexOf(find, start - 1, cs(compare)) + 1);
}

int32_t InStrRev(const QString& s, const QString& find, int32_t start, Compare compare) {
  if (start == 0 || start < -1) fail(err::InvalidProcedureCall);
  if (s.isEmpty()) return 0;
  const int32_t end = start == -1 ? int32_t(s.size()) : start;
  if (end > s.size()) return 0;
  if (find.isEmpty()) return end;
  const qsizetype lastStart = qsizetype(end) - find.size();
  if (lastStart < 0) return 0;
  return int32_t(s.lastIndexOf(find, lastStart, cs(compare)) + 1);
}

QString Replace(const QString& s, const QString& find, const QString& replacement, int32_t start, int32_t count,
                Compare compare) {
  if (start < 1 || count < -1) fail(err::InvalidProcedureCall);
  if (start > s.size()) return QString();
  const QString rest = s.mid(start - 1);
  if (find.isEmpty() || count == 0) return rest;
  QString out;
  qsizetype from = 0;
  int32_t done = 0;
  while (count < 0 || done < count) {
    const qsizetype at = rest.indexOf(find, from, cs(compare));
    if (at < 0) break;
    out += QStringView(rest).mid(from, at - from);
    out += replacement;
    from = at + find.size();
    ++done;
  }
  out += QStringView(rest).mid(from);
  return out;
}

// ---- numbers -----------------------------------------------------------------------------------

double Val(const QString& s) {
  // Blanks, tabs and line feeds count for nothing anywhere in the number.
  QString t;
  t.reserve(s.size());
  for (QChar c : s)
    if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r') t.append(c);
  if (t.size() >= 2 && t[0] == u'&') {
    const QChar r = t[1].toUpper();
    const int radix = r == u'H' ? 16 : r == u'O' ? 8 : 0;
    if (radix == 0) return 0.0;
    qsizetype i = 2;
    while (i < t.size() && (radix == 16 ? QStringLiteral("0123456789abcdefABCDEF").contains(t[i])
                                        : (t[i] >= u'0' && t[i] <= u'7')))
      ++i;
    double v = 0;
    return radixValue(t.mid(2, i - 2), radix, v) ? v : 0.0;
  }
  std::string ascii;
  qsizetype i = 0;
  if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) ascii.push_back(char(t[i++].unicode()));
  int digits = 0;
  while (i < t.size() && isAsciiDigit(t[i])) {
    ascii.push_back(char(t[i++].unicode()));
    ++digits;
  }
  if (i < t.size() && t[i] == u'.') {
    ascii.push_back('.');
    ++i;
    while (i < t.size() && isAsciiDigit(t[i])) {
      ascii.push_back(char(t[i++].unicode()));
      ++digits;
    }
  }
  if (digits == 0) return 0.0;
  if (i < t.size() && QStringLiteral("eEdD").contains(t[i])) {
    std::string exp = "e";
    qsizetype j = i + 1;
    if (j < t.size() && (t[j] == u'+' || t[j] == u'-')) exp.push_back(char(t[j++].unicode()));
    const qsizetype firstDigit = j;
    while (j < t.size() && isAsciiDigit(t[j])) exp.push_back(char(t[j++].unicode()));
    if (j > firstDigit) ascii += exp;
  }
  return readAscii(ascii);
}

bool IsNumeric(const QString& s) {
  try {
    double v = 0;
    return parseNumeric(s, v);
  } catch (const Error&) {
    return false;
  }
}

bool TryNumeric(const QString& s, double& value) {
  try {
    return parseNumeric(s, value);
  } catch (const Error&) {
    return false;
  }
}

double CDbl(const QString& s) {
  double v = 0;
  if (!parseNumeric(s, v)) fail(err::TypeMismatch);
  return v;
}

int16_t CInt(double v) {
  const double r = std::nearbyint(v);  // the default rounding mode: halves to even
  if (!(r >= -32768.0 && r <= 32767.0)) fail(err::Overflow);
  return int16_t(r);
}

int32_t CLng(double v) {
  const double r = std::nearbyint(v);
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) fail(err::Overflow);
  return int32_t(r);
}

int16_t CInt(const QString& s) { return CInt(CDbl(s)); }
int32_t CLng(const QString& s) { return CLng(CDbl(s)); }

double roundDecimal(double v, int decimals) {
  if (!std::isfinite(v) || v == 0.0) return v == 0.0 ? 0.0 : v;
  return valueOf(roundDigits(digitsOf(v), decimals));
}

QString formatNumber(double v, int decimals, bool groups) {
  if (decimals < 0) decimals = 0;
  const Digits d = roundDigits(digitsOf(v), decimals);
  // Built in place: sign, whole part with its groups, point, decimals.
  char16_t small[96];
  std::u16string big;
  const int wholeDigits = std::max(d.point, 1);
  const size_t need = size_t(wholeDigits) + size_t(wholeDigits) / 3 + size_t(decimals) + 4;
  char16_t* out = small;
  if (need > sizeof small / sizeof small[0]) {
    big.resize(need);
    out = big.data();
  }
  size_t n = 0;
  if (d.negative && !d.digits.empty()) out[n++] = u'-';
  if (d.point <= 0) {
    out[n++] = u'0';
  } else {
    for (int i = 0; i < d.point; ++i) {
      if (groups && i > 0 && (d.point - i) % 3 == 0) out[n++] = u',';
      out[n++] = i < int(d.digits.size()) ? char16_t(d.digits[size_t(i)]) : u'0';
    }
  }
  if (decimals > 0) {
    out[n++] = u'.';
    for (int k = 0; k < decimals; ++k) {
      const long idx = long(d.point) + k;
      out[n++] = idx >= 0 && idx < long(d.digits.size()) ? char16_t(d.digits[size_t(idx)]) : u'0';
    }
  }
  return QString(reinterpret_cast<const QChar*>(out), qsizetype(n));
}

namespace {

// The digits of v kept to `significant` places, rounded on the exact binary value.
Digits significantDigits(double v, int significant) {
  Digits d = digitsOf(v);
  if (int(d.digits.size()) <= significant) return d;
  return scientificDigits(v, significant - 1);
}

// Plain digits for moderate magnitudes, an exponent beyond.
QString numberText(double v, const Digits& d) {
  if (std::isnan(v)) return QStringLiteral("NaN");
  if (std::isinf(v)) return v > 0 ? QStringLiteral("Inf") : QStringLiteral("-Inf");
  if (d.digits.empty()) return QStringLiteral("0");
  const int exp10 = d.point - 1;  // scientific exponent
  QString out = d.negative ? QStringLiteral("-") : QString();
  const QString digits = QString::fromLatin1(d.digits.data(), qsizetype(d.digits.size()));
  if (exp10 >= -5 && exp10 < 15) {
    if (d.point <= 0) {
      out += QStringLiteral("0.") + QString(-d.point, u'0') + digits;
    } else if (d.point >= digits.size()) {
      out += digits + QString(d.point - digits.size(), u'0');
    } else {
      out += digits.left(d.point) + u'.' + digits.mid(d.point);
    }
    return out;
  }
  out += digits.left(1);
  if (digits.size() > 1) out += u'.' + digits.mid(1);
  out += exp10 < 0 ? QStringLiteral("E-") : QStringLiteral("E+");
  out += QStringLiteral("%1").arg(std::abs(exp10), 2, 10, QChar(u'0'));
  return out;
}

}  // namespace

QString shortestText(double v) { return numberText(v, digitsOf(v)); }

QString CStr(double v) { return numberText(v, significantDigits(v, 15)); }

// ---- dates -------------------------------------------------------------------------------------

void splitSerial(double serial, QDate& day, int& seconds) {
  // Valid while the whole part names a day from 1 January 100 to 31 December 9999.
  if (!(serial > MinDateSerial - 1.0 && serial < MaxDateSerial + 1.0)) fail(err::Overflow);
  const double whole = std::trunc(serial);
  long long secs = std::llround(std::fabs(serial - whole) * 86400.0);
  day = epoch().addDays(qint64(whole));
  if (secs >= 86400) {
    secs -= 86400;
    day = day.addDays(1);
  }
  seconds = int(secs);
}

QDateTime serialToDateTime(double serial) {
  QDate day;
  int seconds = 0;
  splitSerial(serial, day, seconds);
  return QDateTime(day, QTime(0, 0).addSecs(seconds), Qt::UTC);
}

QDate serialToDate(double serial) {
  QDate day;
  int seconds = 0;
  splitSerial(serial, day, seconds);
  return day;
}

double dateToSerial(const QDate& d) { return double(epoch().daysTo(d)); }

double dateTimeToSerial(const QDateTime& dt) {
  const double days = dateToSerial(dt.date());
  const double t = dt.time().msecsSinceStartOfDay() / 86400000.0;
  return days >= 0 ? days + t : days - t;
}

double timeSerial(int hour, int minute, int second) { return (hour * 3600.0 + minute * 60.0 + second) / 86400.0; }

double DateSerial(int32_t year, int32_t month, int32_t day) {
  int64_t y = year;
  if (y >= 0 && y <= 29)
    y += 2000;
  else if (y >= 30 && y <= 99)
    y += 1900;
  const int64_t months = y * 12 + (int64_t(month) - 1);
  const int64_t y2 = months >= 0 ? months / 12 : -((-months + 11) / 12);
  const int m2 = int(months - y2 * 12) + 1;
  if (y2 < 1 || y2 > 10000) fail(err::Overflow);
  const QDate d = QDate(int(y2), m2, 1).addDays(int64_t(day) - 1);
  const double serial = dateToSerial(d);
  if (serial < MinDateSerial || serial > MaxDateSerial) fail(err::Overflow);
  return serial;
}

int16_t calendarYearOffset() { return g_yearOffset.load(std::memory_order_relaxed); }
void setCalendarYearOffset(int16_t offset) { g_yearOffset.store(offset, std::memory_order_relaxed); }

QString thaiMonthName(int32_t month, bool longForm) {
  if (month < 1 || month > 12) return QString();
  return QString::fromUtf16(longForm ? kThaiLong[month - 1] : kThaiShort[month - 1]);
}

QString englishMonthName(int32_t month, bool longForm) {
  if (month < 1 || month > 12) return QString();
  const QString name = QString::fromLatin1(kEnglishLong[month - 1]);
  return longForm ? name : name.left(3);
}

bool parseDateText(const QString& text, double& serial) {
  double v = 0;
  if (!parseDatePart(text, v)) return false;
  serial = v;
  return true;
}

bool parseTimeText(const QString& text, double& serial) {
  double v = 0;
  if (!parseTimePart(text, v)) return false;
  serial = v;
  return true;
}

bool parseDateTimeText(const QString& text, double& serial) {
  const QString s = Trim(text);
  // Try every blank as the border between the date and the time, the last one first, since
  // both a month name and a time suffix may hold blanks.
  for (qsizetype at = s.lastIndexOf(u' '); at > 0; at = s.lastIndexOf(u' ', at - 1)) {
    double d = 0, t = 0;
    if (parseDatePart(s.left(at), d) && parseTimePart(s.mid(at + 1), t)) {
      serial = d >= 0 ? d + t : d - t;
      return true;
    }
  }
  return false;
}

bool parsePeriodText(const QString& text, double& serial) {
  const QString s = Trim(text);
  int month = 0, year = 0;
  if (allDigits(s) && (s.size() == 6 || s.size() == 4)) {
    if (s.size() == 6)
      year = s.mid(2).toInt();
    else
      year = windowYear(s.mid(2).toInt());
    return makeDate(year, s.left(2).toInt(), 1, serial);
  }
  static const QRegularExpression separators(QStringLiteral("[/\\- ]+"));
  QStringList pieces = s.split(separators);
  if (pieces.size() == 1) pieces = s.split(u'.');
  if (pieces.size() == 2) {
    if (pieces[0].isEmpty()) return false;
    if (allDigits(pieces[0]) && pieces[0].size() <= 2)
      month = pieces[0].toInt();
    else
      month = monthByName(pieces[0]);
    if (month == 0 || !shownYear(pieces[1], year)) return false;
    return makeDate(year, month, 1, serial);
  }
  double day = 0;
  if (!parseDateText(s, day)) return false;
  const QDate d = serialToDate(day);
  serial = dateToSerial(QDate(d.year(), d.month(), 1));
  return true;
}

bool IsDate(const QString& s) {
  double v = 0;
  return parseDateText(s, v) || parseDateTimeText(s, v) || parseTimeText(s, v);
}

double CDate(const QString& s) {
  double v = 0;
  if (parseDateText(s, v) || parseDateTimeText(s, v) || parseTimeText(s, v)) return v;
  fail(err::TypeMismatch);
}

double CDate(double v) {
  if (!(v >= MinDateSerial && v < MaxDateSerial + 1.0)) fail(err::Overflow);
  return v;
}

double CDbl(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::QDate: return dateToSerial(v.toDate());
    case QMetaType::QDateTime: return dateTimeToSerial(v.toDateTime());
    case QMetaType::QString: return CDbl(v.toString());
    case QMetaType::Bool: return v.toBool() ? -1 : 0;
    default: return v.toDouble();
  }
}

}  // namespace tq7::vb
