// libFuzzer target for the image header reader: any bytes as the start of a file. The reader
// may fail with Overflow (a depth that does not fit in a byte); anything else, a crash, a read
// outside the buffer or an answer that breaks the reader's own bounds, is a finding.
#include "controls/CImageInfo.h"
#include "frame/Error.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tq7::CImageInfo info;
  try {
    info.ReadImageInfoBytes(data, size);
  } catch (const tq7::Error& e) {
    if (e.number != tq7::err::Overflow) std::abort();
    return 0;
  }
  // Sizes are read from two bytes; an unknown type reads zeros.
  if (info.Width() < 0 || info.Width() > 65535 || info.Height() < 0 || info.Height() > 65535) std::abort();
  if (info.ImageType() == tq7::itUNKNOWN && (info.Width() || info.Height() || info.Depth())) std::abort();
  if (info.ImageType() < tq7::itUNKNOWN || info.ImageType() > tq7::itBMP) std::abort();
  return 0;
}
