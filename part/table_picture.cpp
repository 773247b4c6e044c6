#include "part/table_picture.h"

#include <algorithm>
#include <cstddef>

#include "host/utility.h"
#include "part/cell_text.h"
#include "part/table_layout.h"

namespace Table {
namespace {

constexpr char kSheet[] = "#ffffff";
constexpr char kEvenRow[] = "#eef2f6";
constexpr char kSelectedRow[] = "#ffd24d";
constexpr char kHead[] = "#1f4e79";
constexpr char kGrid[] = "#b9c4cf";
constexpr char kHeadText[] = "#ffffff";
constexpr char kBodyText[] = "#10202f";

constexpr int kSmallestFont = 7;
constexpr int kLargestFont = 26;
constexpr int kClosestLines = 4;

/// Low bands give their text all the height they can; higher ones rather more room around it.
int fontSize(int bandHeight) {
  const int height = std::min(bandHeight, 100);
  return std::min({height * 6 / 10, 10 + height / 5, kLargestFont});
}

class Painter {
 public:
  explicit Painter(const Content& content)
      : content_(content),
        width_(extent(content.area.left, content.area.right)),
        height_(extent(content.area.top, content.area.bottom)),
        bands_(content.rows + 1) {}

  std::string paint() {
    svg_.begin(width_, height_);
    svg_.rectangle({0, 0, width_, height_}, kSheet);
    if (content_.hasGrid()) {
      columns_ = columnEdges(width_, content_.cols, content_.ratios);
      paintBands();
      paintLines();
      paintTexts();
    }
    return svg_.getXml();
  }

 private:
  int edge(int band) const { return bandEdge(height_, bands_, band); }

  void paintBand(int band, const char* fill) {
    if (edge(band) < edge(band + 1)) svg_.rectangle({0, edge(band), width_, edge(band + 1)}, fill);
  }

  void paintBands() {
    paintBand(0, kHead);
    for (int row = 1; row <= content_.rows; ++row) {
      if (row == content_.selectedRow) {
        paintBand(row, kSelectedRow);
      } else if (row % 2 == 0) {
        paintBand(row, kEvenRow);
      }
    }
  }

  void paintLines() {
    int last = 0;
    for (int band = 1; band < bands_; ++band) {
      if (edge(band) - last < kClosestLines) continue;
      last = edge(band);
      svg_.line({0, last}, {width_, last}, kGrid);
    }
    last = 0;
    for (const int column : columns_) {
      if (column - last < kClosestLines || column == width_) continue;
      last = column;
      svg_.line({last, 0}, {last, height_}, kGrid);
    }
    paintFrame();
  }

  void paintFrame() {
    svg_.line({0, 0}, {width_, 0}, kGrid);
    svg_.line({0, height_ - 1}, {width_, height_ - 1}, kGrid);
    svg_.line({0, 0}, {0, height_}, kGrid);
    svg_.line({width_ - 1, 0}, {width_ - 1, height_}, kGrid);
  }

  void paintTexts() {
    const int size = fontSize(height_ / bands_);
    if (size < kSmallestFont) return;
    paintRow(0, content_.head, {size, true}, kHeadText);
    const std::size_t rows = std::min<std::size_t>(content_.body.size(), content_.rows);
    for (std::size_t row = 0; row < rows; ++row) {
      paintRow(static_cast<int>(row) + 1, content_.body[row], {size, false}, kBodyText);
    }
  }

  void paintRow(int band, const Row& texts, const Font& font, const char* colour) {
    const int middle = edge(band) + (edge(band + 1) - edge(band)) / 2;
    const int left = font.size / 2;
    const int right = font.size / 5;  // less: the estimate of the text's width adds some
    const std::size_t cells = std::min<std::size_t>(texts.size(), content_.cols);
    for (std::size_t cell = 0; cell < cells; ++cell) {
      const int room = columns_[cell + 1] - columns_[cell] - left - right;
      const std::string text = fitText(texts[cell], std::max(room, 0), font);
      if (text.find_first_not_of(' ') == std::string::npos) continue;
      svg_.text({columns_[cell] + left, middle}, text, font.size, colour, font.bold);
    }
  }

  const Content& content_;
  const int width_;
  const int height_;
  const int bands_;
  std::vector<int> columns_;
  UTILITY::CSVGCreator svg_;
};

}  // namespace

bool Content::hasGrid() const {
  return rows > 0 && cols > 0 && area.left < area.right && area.top < area.bottom;
}

std::string drawTable(const Content& content) {
  return Painter(content).paint();
}

}  // namespace Table
