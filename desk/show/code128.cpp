#include "desk/show/cut_pictures.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace desk::show {

namespace {

// The stripes of the values 0 to 105, six each.
constexpr char kStripes[] =
    "212222222122222221121223121322131222122213122312132212221213221312231212112232122132122231"
    "113222123122123221223211221132221231213212223112312131311222321122321221312212322112322211"
    "212123212321232121111323131123131321112313132113132311211313231113231311112133112331132131"
    "113123113321133121313121211331231131213113213311213131311123311321331121312113312311332111"
    "314111221411431111111224111422121124121421141122141221112214112412122114122411142112142211"
    "241211221114413111241112134111111242121142121241114212124112124211411212421112421211212141"
    "214121412121111143111341131141114113114311411113411311113141114131311141411131211412211214"
    "211232";
constexpr char kStop[] = "2331112";
constexpr int kStartB = 104;
constexpr int kChecksum = 103;

std::string stripesOf(int value) {
  return {kStripes + std::ptrdiff_t{6} * value, 6};
}

}  // namespace

std::string code128(const std::string& text) {
  const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
  if (text.empty() || !std::all_of(text.begin(), text.end(), isPrintable)) return "";
  std::string stripes = stripesOf(kStartB);
  int sum = kStartB;
  int place = 0;
  for (const char c : text) {
    const int value = c - ' ';
    stripes += stripesOf(value);
    sum = (sum + ++place * value) % kChecksum;
  }
  return stripes + stripesOf(sum % kChecksum) + kStop;
}

int widthOfCode(const std::string& stripes) {
  return std::accumulate(stripes.begin(), stripes.end(), 2 * kQuietZone,
                         [](int width, char stripe) { return width + stripe - '0'; });
}

}  // namespace desk::show
