#include "part/table_layout.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace Table {
namespace {

double sum(const std::vector<float>& ratios) {
  double total = 0.0;
  for (const float ratio : ratios) total += static_cast<double>(ratio);
  return total;
}

bool usable(int columns, const std::vector<float>& ratios) {
  const auto negative = [](float ratio) { return ratio < 0.0F; };
  const double total = sum(ratios);
  return ratios.size() == static_cast<std::size_t>(columns) && std::isfinite(total) &&
         total > 0.0 && std::none_of(ratios.begin(), ratios.end(), negative);
}

}  // namespace

int extent(int from, int to) {
  const std::int64_t distance = std::int64_t{to} - from;
  return static_cast<int>(std::clamp<std::int64_t>(distance, 0, INT_MAX));
}

int bandEdge(int height, int bands, int index) {
  return static_cast<int>(std::int64_t{height} * index / bands);
}

int bandAt(int height, int bands, int y) {
  return static_cast<int>(((std::int64_t{y} + 1) * bands - 1) / height);
}

std::vector<int> columnEdges(int width, int columns, const std::vector<float>& ratios) {
  const bool proportional = usable(columns, ratios);
  const double total = proportional ? sum(ratios) : columns;
  std::vector<int> edges(static_cast<std::size_t>(columns) + 1, 0);
  double running = 0.0;
  for (std::size_t column = 1; column < edges.size(); ++column) {
    running += proportional ? static_cast<double>(ratios[column - 1]) : 1.0;
    edges[column] = static_cast<int>(std::floor(width * (running / total) + 0.5));
  }
  edges.back() = width;
  return edges;
}

}  // namespace Table
