#include "companion/db/ResultTable.h"

#include <QByteArray>
#include <bit>
#include <sys/mman.h>
#include <unistd.h>

namespace tq7::db {

namespace detail {

namespace {
size_t pageRounded(size_t bytes) {
  static const size_t page = size_t(sysconf(_SC_PAGESIZE));
  return (bytes + page - 1) / page * page;
}
}  // namespace

#ifndef MADV_POPULATE_WRITE
#define MADV_POPULATE_WRITE 23
#endif

// Grows (or shrinks) an array to newBytes. A mapped one (of capBytes) is remapped in place or
// moved by the kernel without copying; a heap one is copied once, usedBytes of it, into a fresh
// mapping (the caller frees it).
void* mapGrow(void* p, size_t capBytes, size_t usedBytes, size_t newBytes, bool mapped) {
  void* q;
  if (mapped) {
    q = mremap(p, pageRounded(capBytes), pageRounded(newBytes), MREMAP_MAYMOVE);
  } else {
    q = mmap(nullptr, pageRounded(newBytes), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (q != MAP_FAILED && usedBytes) std::memcpy(q, p, usedBytes);
  }
  if (q == MAP_FAILED) throw std::bad_alloc();
  // The part a growth adds is made resident in one call: the values that follow fill it, and a
  // fault per page costs many times more, above all on a virtual machine. An older kernel that
  // lacks the call leaves it to the faults.
  const size_t from = pageRounded(usedBytes), to = pageRounded(newBytes);
  if (to > from) madvise(static_cast<char*>(q) + from, to - from, MADV_POPULATE_WRITE);
  return q;
}

void mapFree(void* p, size_t bytes) {
  if (p) munmap(p, pageRounded(bytes));
}

}  // namespace detail

ResultTable::ResultTable(const QStringList& names) {
  cols_.resize(size_t(names.size()));
  for (qsizetype i = 0; i < names.size(); ++i) cols_[size_t(i)].name = names[i];
}

FieldType ResultTable::type(int32_t c) const {
  const Column& col = cols_[size_t(c)];
  switch (col.kind) {
    case Kind::None: return col.declared;
    case Kind::Int: return FieldType::Integer;
    case Kind::Double: return col.declared == FieldType::Date ? FieldType::Date : FieldType::Double;
    case Kind::Text: return FieldType::Text;
    case Kind::Blob: return FieldType::Binary;
    case Kind::Mixed: return FieldType::Variant;
  }
  return FieldType::Empty;
}

bool ResultTable::isNull(int64_t row, int32_t c) const {
  const Column& col = cols_[size_t(c)];
  const size_t w = size_t(row) >> 6;
  return w < col.nulls.size() && ((col.nulls[w] >> (uint64_t(row) & 63)) & 1u);
}

ResultTable::Kind ResultTable::kindAt(int64_t row, int32_t c) const {
  const Column& col = cols_[size_t(c)];
  if (row < 0 || row >= col.count || isNull(row, c)) return Kind::None;
  return col.kind == Kind::Mixed ? Kind(col.tags[size_t(row)]) : col.kind;
}

bool ResultTable::number(int64_t row, int32_t c, double& out) const {
  const Kind k = kindAt(row, c);
  if (k != Kind::Int && k != Kind::Double) return false;
  const int64_t n = cols_[size_t(c)].nums[size_t(row)];
  out = k == Kind::Int ? double(n) : std::bit_cast<double>(n);
  return true;
}

QVariant ResultTable::value(int64_t row, int32_t c) const {
  const Column& col = cols_[size_t(c)];
  const size_t r = size_t(row);
  const Kind k = kindAt(row, c);
  switch (k) {
    case Kind::Int: return QVariant(qlonglong(col.nums[r]));
    case Kind::Double: return QVariant(std::bit_cast<double>(col.nums[r]));
    case Kind::Text:
    case Kind::Blob: {
      const uint64_t from = r ? col.ends[r - 1] : 0;
      const uint64_t len = col.ends[r] - from;
      if (k == Kind::Text) return QVariant(QString::fromUtf8(col.bytes.data() + from, qsizetype(len)));
      return QVariant(QByteArray(col.bytes.data() + from, qsizetype(len)));
    }
    default: return QVariant();
  }
}

ResultTable::Column& ResultTable::prepare(int32_t c, bool null) {
  Column& col = cols_[size_t(c)];
  if ((uint64_t(col.count) & 63) == 0) col.nulls.push_back(0);
  if (null) col.nulls[size_t(col.count) >> 6] |= uint64_t(1) << (uint64_t(col.count) & 63);
  return col;
}

void ResultTable::appendNull(int32_t c) {
  Column& col = prepare(c, true);
  switch (col.kind) {
    case Kind::None: break;
    case Kind::Int:
    case Kind::Double: col.nums.push_back(0); break;
    case Kind::Text:
    case Kind::Blob: col.ends.push_back(col.bytes.size()); break;
    case Kind::Mixed:
      col.nums.push_back(0);
      col.ends.push_back(col.bytes.size());
      col.tags.push_back(uint8_t(Kind::None));
      break;
  }
  ++col.count;
}

void ResultTable::intsToDoubles(Column& col) {
  for (size_t i = 0; i < col.nums.size(); ++i) col.nums[i] = std::bit_cast<int64_t>(double(col.nums[i]));
  col.kind = Kind::Double;
}

void ResultTable::toMixed(Column& col) {
  const size_t n = size_t(col.count);
  const Kind was = col.kind;
  if (was != Kind::Int && was != Kind::Double) col.nums.resize(n, 0);
  if (was != Kind::Text && was != Kind::Blob) col.ends.resize(n, 0);
  col.tags.resize(n, uint8_t(was));
  col.kind = Kind::Mixed;
}

void ResultTable::appendInt(int32_t c, int64_t v) {
  Column& col = prepare(c, false);
  switch (col.kind) {
    case Kind::None:
      col.nums.resize(size_t(col.count), 0);
      col.kind = Kind::Int;
      [[fallthrough]];
    case Kind::Int: col.nums.push_back(v); break;
    case Kind::Double: col.nums.push_back(std::bit_cast<int64_t>(double(v))); break;
    case Kind::Text:
    case Kind::Blob: toMixed(col); [[fallthrough]];
    case Kind::Mixed:
      col.nums.push_back(v);
      col.ends.push_back(col.bytes.size());
      col.tags.push_back(uint8_t(Kind::Int));
      break;
  }
  ++col.count;
}

void ResultTable::appendDouble(int32_t c, double v) {
  Column& col = prepare(c, false);
  switch (col.kind) {
    case Kind::None:
      col.nums.resize(size_t(col.count), 0);
      col.kind = Kind::Double;
      break;
    case Kind::Int: intsToDoubles(col); break;
    case Kind::Double: break;
    case Kind::Text:
    case Kind::Blob: toMixed(col); [[fallthrough]];
    case Kind::Mixed:
      col.nums.push_back(std::bit_cast<int64_t>(v));
      col.ends.push_back(col.bytes.size());
      col.tags.push_back(uint8_t(Kind::Double));
      ++col.count;
      return;
  }
  col.nums.push_back(std::bit_cast<int64_t>(v));
  ++col.count;
}

void ResultTable::appendText(int32_t c, const char* utf8, size_t n) {
  Column& col = prepare(c, false);
  switch (col.kind) {
    case Kind::None:
      col.ends.resize(size_t(col.count), 0);
      col.kind = Kind::Text;
      break;
    case Kind::Text: break;
    case Kind::Int:
    case Kind::Double:
    case Kind::Blob: toMixed(col); [[fallthrough]];
    case Kind::Mixed:
      col.nums.push_back(0);
      col.tags.push_back(uint8_t(Kind::Text));
      break;
  }
  col.bytes.append(utf8, n);
  col.ends.push_back(col.bytes.size());
  ++col.count;
}

void ResultTable::appendBlob(int32_t c, const char* data, size_t n) {
  Column& col = prepare(c, false);
  switch (col.kind) {
    case Kind::None:
      col.ends.resize(size_t(col.count), 0);
      col.kind = Kind::Blob;
      break;
    case Kind::Blob: break;
    case Kind::Int:
    case Kind::Double:
    case Kind::Text: toMixed(col); [[fallthrough]];
    case Kind::Mixed:
      col.nums.push_back(0);
      col.tags.push_back(uint8_t(Kind::Blob));
      break;
  }
  col.bytes.append(data, n);
  col.ends.push_back(col.bytes.size());
  ++col.count;
}

void ResultTable::finish() {
  for (Column& col : cols_) {
    col.nulls.shrink();
    col.nums.shrink();
    col.bytes.shrink();
    col.ends.shrink();
    col.tags.shrink();
  }
}

size_t ResultTable::memoryBytes() const {
  size_t total = sizeof(*this) + cols_.capacity() * sizeof(Column);
  for (const Column& col : cols_)
    total += col.nulls.capacityBytes() + col.nums.capacityBytes() + col.bytes.capacityBytes() +
             col.ends.capacityBytes() + col.tags.capacityBytes();
  return total;
}

}  // namespace tq7::db
