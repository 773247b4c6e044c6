// Memory that runs out: every single allocation of a load, of each query and of each operation of
// the table part fails once. Nothing crashes, nothing leaks, and the next load holds that job and
// nothing else.
#include <functional>

#include "fuzz/job_text.h"
#include "json/json_analysis.h"
#include "module/part_callbacks.h"
#include "part/table_part.h"
#include "tests/desk/host/host_test.h"
#include "tests/support/counting_heap.h"
#include "tests/support/made_jobs.h"
#include "xml/xml_analysis.h"

namespace {

using counting_heap::live;
using fuzzing::textOf;
using fuzzing::textOfAll;

constexpr char kJson[] = "/mnt/data/a.json";
constexpr char kXml[] = "/mnt/data/a.xml";

int load(JsonAnalysis& reader) {
  return reader.jsonAnalysis(kJson);
}
int load(XmlAnalysis& reader) {
  return reader.xmlAnalysis(kXml);
}

class HeapFaults : public HostTest {
 protected:
  HeapFaults() {
    tree.write("root/mnt/data/a.json", made_jobs::json({}));
    tree.write("root/mnt/data/a.xml", made_jobs::xml({}));
    desk::setLogSink([](const std::string&) {});
    testing::internal::CaptureStdout();
  }
  ~HeapFaults() override {
    const std::string output = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::fputs(output.c_str(), stderr);
  }
};

/// Runs `act` again and again, each time with another allocation failing, until none does. After
/// each, `recover` must bring the heap back to the byte. Returns how many allocations failed.
int failEachAllocation(bool all, const std::function<void()>& act,
                       const std::function<void()>& recover) {
  counting_heap::Live before;
  for (int count = 0;; ++count) {
    counting_heap::failAfter(static_cast<unsigned long long>(count), all);
    try {
      act();
    } catch (const std::bad_alloc&) {
      // what an allocation that failed may bring about, and nothing else
    } catch (const Json::RuntimeError&) {
      // what the JSON library makes of it
    }
    const bool failed = counting_heap::stopFailing();
    recover();
    if (!failed) return count;
    // What the libraries keep for good after a first failure is nobody's leak.
    if (count == 0) before = live();
    const long long more = live().bytes - before.bytes;
    if (more != 0 || testing::Test::HasFailure()) {
      ADD_FAILURE() << "allocation " << count << ": " << more << " bytes more on the heap";
      return count;
    }
  }
}

/// Loads under faults, and after each fault once more without.
template <class Reader>
int failLoads(Reader& reader, bool all) {
  int code = 0;
  EXPECT_EQ(load(reader), 0);
  const std::string whole = textOf(reader.data);
  const auto recover = [&] {
    EXPECT_TRUE(code == 0 || code == -2) << code;
    EXPECT_TRUE(reader.curBar.piece.empty() && reader.curPiece.work.empty());
    EXPECT_EQ(load(reader), 0);
    EXPECT_EQ(textOf(reader.data), whole);
  };
  return failEachAllocation(
      all, [&] { code = load(reader); }, recover);
}

/// Asks under faults, and after each fault once more without.
int failQuery(const std::function<std::string()>& ask) {
  const std::string answer = ask();
  return failEachAllocation(false, ask, [&] { EXPECT_EQ(ask(), answer); });
}

template <class Reader>
std::vector<std::function<std::string()>> sharedQueries(Reader& reader) {
  const auto dimensions = [&] {
    std::string y, z, length;
    reader.getMaxYZ_Cutlength("a", y, z, length);
    return y + z + length;
  };
  return {
      [&] { return textOfAll(reader.getWork("a")); },
      [&] { return std::to_string(reader.getAllWork().size()); },
      [&] { return textOfAll(reader.getCut("7")); },
      [&] { return textOfAll(reader.getAllCut()); },
      [&] { return textOfAll(reader.getHole()); },
      [&] { return textOfAll(reader.getPrint()); },
      [&] { return reader.getBarCode("7", "7"); },
      dimensions,
  };
}

}  // namespace

TEST_F(HeapFaults, LoadsRecover) {
  int faults = 0;
  for (const bool all : {false, true}) {
    JsonAnalysis json;
    XmlAnalysis xml;
    faults += failLoads(json, all);
    faults += failLoads(xml, all);
  }
  RecordProperty("faults", faults);
  std::fprintf(stderr, "loads: %d allocations failed\n", faults);
  EXPECT_GT(faults, 400);
}

TEST_F(HeapFaults, QueriesRecover) {
  JsonAnalysis json;
  XmlAnalysis xml;
  ASSERT_EQ(load(json), 0);
  ASSERT_EQ(load(xml), 0);
  int faults = 0;
  for (const auto& query : sharedQueries(json)) faults += failQuery(query);
  for (const auto& query : sharedQueries(xml)) faults += failQuery(query);
  faults += failQuery([&] {
    json.getAllBarCodeToMap();
    return json.getBarCode("7", "7") + json.getBarCode("unknown", "piece of a long name");
  });
  std::fprintf(stderr, "queries: %d allocations failed\n", faults);
  EXPECT_GT(faults, 100);
}

TEST_F(HeapFaults, TheTablePartKeepsWhatItShows) {
  CLuaParseModulePart part;
  std::vector<std::string> row = {"a text of more than a few bytes", "another one of that kind"};
  std::list<std::vector<std::string>*> rows = {&row, nullptr, &row};
  part.SetSvgRect({0, 0, 400, 200});
  part.SetCell(4, 2, "2:1");
  const auto picture = [&] {
    std::string svg;
    EXPECT_TRUE(onFillPartShowAttr(&part, svg, nullptr)) << "an exception is the host's to see";
    return svg;
  };
  const std::function<void()> operations[] = {
      [&] { part.SetCell(6, 2, "1:2"); },
      [&] { part.DrawHeadText(row); },
      [&] { part.SetBodyText(rows); },
      [&] { picture(); },
  };
  int faults = 0;
  for (const auto& operation : operations) {
    const std::string before = picture();
    bool failed = true;
    const auto act = [&] {
      operation();
      failed = false;
    };
    const auto recover = [&] { EXPECT_TRUE(!failed || picture() == before); };
    faults += failEachAllocation(false, act, recover);
  }
  std::fprintf(stderr, "table part: %d allocations failed\n", faults);
  EXPECT_GT(faults, 20);
}
