#include "nxfv/archive/windowed_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace nxfv {
namespace {

// A file whose reads are counted; Size() may claim more than it holds, as
// a simulated file can.
class BytesFile : public RandomAccessFile {
 public:
  BytesFile(std::string bytes, uint64_t claimed) : bytes_(std::move(bytes)), claimed_(claimed) {}
  uint64_t Size() override { return claimed_; }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    ++reads;
    if (offset >= bytes_.size()) return 0;
    const size_t count = std::min<uint64_t>(n, bytes_.size() - offset);
    if (count == 0) return 0;
    std::memcpy(buffer, bytes_.data() + offset, count);
    return count;
  }
  size_t reads = 0;

 private:
  std::string bytes_;
  uint64_t claimed_;
};

// Whatever the access pattern, the window answers what the file answers,
// also when the size the file states is wrong either way (a file that grew
// or shrank, a size that reads as 0): the window is sized from it.
TEST(WindowedFileTest, AnswersExactlyLikeTheFileWhateverSizeItStates) {
  std::string content(700000, '\0');
  std::mt19937 rng(42);
  for (char& c : content) c = static_cast<char>(rng());
  for (const uint64_t claimed : {uint64_t{700000}, uint64_t{0}, uint64_t{1}, uint64_t{4096}, uint64_t{99999},
                                 uint64_t{5000000}}) {
    BytesFile direct(content, claimed), backing(content, claimed);
    WindowedFile windowed(backing);
    std::uniform_int_distribution<uint64_t> offsets(0, content.size() + 1000);
    for (int i = 0; i < 1000; ++i) {
      // Often right at the end, now and then a read far larger than the window.
      const uint64_t offset = (i % 3 == 0) ? content.size() - (i % 500) : offsets(rng);
      const size_t n = (i % 7 == 0) ? 300000 - i : i % 700;
      std::vector<uint8_t> a(n, 0xAA), b(n, 0xAA);
      const size_t got = direct.ReadAt(offset, a.data(), n);
      ASSERT_EQ(got, windowed.ReadAt(offset, b.data(), n)) << "claimed " << claimed << " offset " << offset;
      ASSERT_EQ(a, b) << "claimed " << claimed << " offset " << offset << " n " << n;
    }
  }
}

TEST(WindowedFileTest, PrefetchedRegionServesSequentialReadsWithoutFileReads) {
  std::string content(100000, 'x');
  BytesFile backing(content, content.size());
  WindowedFile windowed(backing);
  windowed.Prefetch(1000, 90000);
  std::vector<uint8_t> buf(46);
  for (uint64_t at = 1000; at + 46 <= 91000; at += 46) ASSERT_EQ(windowed.ReadAt(at, buf.data(), 46), 46u);
  EXPECT_EQ(backing.reads, 1u);
  // Past the end: one read finds the end, later ones are answered at once.
  EXPECT_EQ(windowed.ReadAt(200000, buf.data(), 46), 0u);
  EXPECT_EQ(windowed.ReadAt(300000, buf.data(), 46), 0u);
  EXPECT_EQ(backing.reads, 2u);
}

}  // namespace
}  // namespace nxfv
