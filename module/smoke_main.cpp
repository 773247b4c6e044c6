// A developer's smoke test of the download path, started by calling the library's `main`. It never
// returns. The host has no use for it, and no other program may link this file.
#include <iostream>

#include "json/json_analysis.h"

int main() {
  std::cout << "1122211" << std::endl;
  JsonAnalysis reader;
  reader.getJson(CUS_SMOKE_SERVICE "/api/order_bom/third/getCuttingBoms?id=706", "");
  for (;;) std::cout << "11333111" << std::endl;
}
