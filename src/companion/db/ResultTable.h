#pragma once
// A static result held whole in memory, one typed store per column: 64-bit integers, doubles or
// UTF-8 text in one arena, with a null bitmap beside each. Nothing is kept per cell as a QVariant;
// a value is made only when a caller reads it. Providers fill it row by row through the append
// calls; a column whose values change kind on the way (SQLite is loosely typed) is promoted.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

namespace tq7::db {

// What a field holds. Date values are double serials (days since 30 December 1899).
enum class FieldType : int16_t { Empty = 0, Integer = 1, Double = 2, Date = 3, Text = 4, Binary = 5, Variant = 6 };

// A growable array of plain values. Small arrays live on the heap; past a few hundred kilobytes
// an array moves to its own mapping and grows with mremap, so that a column of a large result
// never holds an old and a new copy at once; the pages a growth adds are made resident at once,
// and what no value reached is given back when the fetch ends.
namespace detail {
void* mapGrow(void* p, size_t capBytes, size_t usedBytes, size_t newBytes, bool mapped);
void mapFree(void* p, size_t bytes);
constexpr size_t kMapThreshold = 256 * 1024;
}  // namespace detail

template <class T>
class PodBuffer {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  PodBuffer() = default;
  PodBuffer(const PodBuffer&) = delete;
  PodBuffer& operator=(const PodBuffer&) = delete;
  PodBuffer(PodBuffer&& o) noexcept : p_(o.p_), n_(o.n_), cap_(o.cap_) { o.p_ = nullptr, o.n_ = o.cap_ = 0; }
  PodBuffer& operator=(PodBuffer&& o) noexcept {
    if (this != &o) {
      release();
      p_ = o.p_, n_ = o.n_, cap_ = o.cap_;
      o.p_ = nullptr, o.n_ = o.cap_ = 0;
    }
    return *this;
  }
  ~PodBuffer() { release(); }

  size_t size() const { return n_; }
  size_t capacityBytes() const { return cap_ * sizeof(T); }
  T* data() { return p_; }
  const T* data() const { return p_; }
  T& operator[](size_t i) { return p_[i]; }
  const T& operator[](size_t i) const { return p_[i]; }

  void push_back(T v) {
    if (n_ == cap_) grow(n_ + 1);
    p_[n_++] = v;
  }
  // Appends count values copied from src.
  void append(const T* src, size_t count) {
    if (n_ + count > cap_) grow(n_ + count);
    if (count) std::memcpy(p_ + n_, src, count * sizeof(T));
    n_ += count;
  }
  void resize(size_t n, T fill) {
    if (n > cap_) grow(n);
    for (size_t i = n_; i < n; ++i) p_[i] = fill;
    n_ = n;
  }
  // Gives back what growth left unused.
  void shrink() {
    if (cap_ == n_) return;
    if (n_ == 0) {
      release();
      return;
    }
    setCapacity(n_);
  }

 private:
  bool mapped() const { return cap_ * sizeof(T) >= detail::kMapThreshold; }
  void grow(size_t need) {
    size_t cap = cap_ ? cap_ + cap_ / 2 : 16;
    setCapacity(cap < need ? need : cap);
  }
  void setCapacity(size_t cap) {
    const size_t bytes = cap * sizeof(T);
    void* q = nullptr;
    if (bytes < detail::kMapThreshold && !mapped()) {
      q = std::realloc(p_, bytes);
      if (!q) throw std::bad_alloc();
    } else if (bytes < detail::kMapThreshold) {  // a mapped array shrinking to a small one
      q = std::malloc(bytes);
      if (!q) throw std::bad_alloc();
      std::memcpy(q, p_, n_ * sizeof(T));
      detail::mapFree(p_, cap_ * sizeof(T));
    } else {
      q = detail::mapGrow(p_, cap_ * sizeof(T), n_ * sizeof(T), bytes, mapped());
      if (!mapped()) std::free(p_);
    }
    p_ = static_cast<T*>(q);
    cap_ = cap;
  }
  void release() {
    if (mapped()) detail::mapFree(p_, cap_ * sizeof(T));
    else std::free(p_);
    p_ = nullptr, n_ = cap_ = 0;
  }

  T* p_ = nullptr;
  size_t n_ = 0;
  size_t cap_ = 0;
};

class ResultTable {
 public:
  explicit ResultTable(const QStringList& names);
  ResultTable(const ResultTable&) = delete;
  ResultTable& operator=(const ResultTable&) = delete;

  int32_t columnCount() const { return int32_t(cols_.size()); }
  int64_t rowCount() const { return rows_; }
  const QString& name(int32_t c) const { return cols_[size_t(c)].name; }
  // The column's type as fetched; a column with no value but nulls takes its declared type.
  FieldType type(int32_t c) const;
  // The type the source declared, used when no value says otherwise; Date turns doubles into dates.
  void setDeclaredType(int32_t c, FieldType t) { cols_[size_t(c)].declared = t; }

  bool isNull(int64_t row, int32_t c) const;
  // The cell as a variant: a null QVariant for NULL, qlonglong, double, QString or QByteArray.
  QVariant value(int64_t row, int32_t c) const;
  // The cell as a number when it holds one (not NULL, not a text or bytes): what a reader that
  // wants numbers takes without making a variant.
  bool number(int64_t row, int32_t c, double& out) const;

  // Filling, row by row: each column takes exactly one append per row, then endRow().
  void appendNull(int32_t c);
  void appendInt(int32_t c, int64_t v);
  void appendDouble(int32_t c, double v);
  void appendText(int32_t c, const char* utf8, size_t bytes);
  void appendBlob(int32_t c, const char* data, size_t bytes);
  void endRow() { ++rows_; }
  // Called once the last row is in: trims the stores to their size.
  void finish();

  // Bytes held by the stores, for the budget of a fetch.
  size_t memoryBytes() const;

 private:
  enum class Kind : uint8_t { None, Int, Double, Text, Blob, Mixed };
  struct Column {
    QString name;
    FieldType declared = FieldType::Empty;
    Kind kind = Kind::None;
    int64_t count = 0;            // values appended so far
    PodBuffer<uint64_t> nulls;    // one bit per row
    PodBuffer<int64_t> nums;      // Int; Double as its bits; Mixed numbers
    PodBuffer<char> bytes;        // Text, Blob and Mixed texts: one arena
    PodBuffer<uint64_t> ends;     // end offset in the arena of each row's text
    PodBuffer<uint8_t> tags;      // Mixed only: the kind of each row
  };

  // What the cell holds: None for NULL or a row beyond the column.
  Kind kindAt(int64_t row, int32_t c) const;
  Column& prepare(int32_t c, bool isNull);
  void toMixed(Column& col);
  void intsToDoubles(Column& col);

  std::vector<Column> cols_;
  int64_t rows_ = 0;
};

}  // namespace tq7::db
