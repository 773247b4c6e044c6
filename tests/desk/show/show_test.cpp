// The rows of cusdesk show and their origins, over the same damaged jobs as check: compared with
// the tables that a script gets from the plug-in, and with what stands at the places in the file.
#include <gtest/gtest.h>

#include <fstream>

#include "desk/base/errors.h"
#include "desk/base/stdout_redirect.h"
#include "desk/check/check_session.h"
#include "desk/host/settings.h"
#include "desk/job/job_file.h"
#include "desk/show/origins.h"
#include "desk/show/script_answers.h"
#include "tests/desk/check/json_jobs.h"
#include "tests/desk/check/xml_jobs.h"
#include "tests/support/temp_tree.h"

namespace {

using namespace desk;
using namespace desk::show;

constexpr unsigned kSeed = 20'300'117;
constexpr int kJobs = 1000 / CUS_FEWER;

/// Every field of every row that the script gets, as the script sees it.
constexpr char kDump[] = R"(
  local command, argument = ...
  local text = ""
  for _, row in ipairs(cus_ParseModule[command](argument)) do
    local keys = {}
    for key in pairs(row) do keys[#keys + 1] = key end
    table.sort(keys)
    for _, key in ipairs(keys) do
      local value = row[key]
      text = text .. key .. "=" .. type(value) .. ":" ..
             (type(value) == "number" and string.format("%.17g", value) or value) .. "\n"
    end
    text = text .. "\n"
  end
  return text)";

/// The script's own tables, or what the command raises.
std::string scriptsTables(script::ScriptEngine& engine, const char* command,
                          const std::string& argument) {
  lua_State* L = engine.state();
  lua_settop(L, 0);
  EXPECT_EQ(luaL_loadstring(L, kDump), LUA_OK);
  lua_pushstring(L, command);
  lua_pushstring(L, argument.c_str());
  lua_pcall(L, 2, 1, 0);
  const std::string text = lua_tostring(L, -1);
  return text;
}

std::string tablesText(const Table& table) {
  std::string text;
  for (const std::vector<Cell>& row : table.rows) {
    std::map<std::string, std::string> fields;
    for (std::size_t i = 0; i < row.size(); ++i) {
      char number[40];
      std::snprintf(number, sizeof number, "%.17g", row[i].number);
      fields[table.keys[i]] =
          row[i].isNumber ? "number:" + std::string(number) : "string:" + row[i].text;
    }
    for (const auto& [key, value] : fields) text += key + "=" + value + "\n";
    text += "\n";
  }
  return text;
}

/// Whether a value stands on the line of its file.
bool standsThere(const Cell& cell, std::string_view line) {
  // Of numbers that are converted trailing text is dropped, and a right angle of 135 becomes 45.
  return line.find(cell.text) != std::string_view::npos ||
         (cell.text == "45" && line.find("135") != std::string_view::npos);
}

class ShowTest : public testing::Test {
 protected:
  ShowTest() { deskhost::settings().root = tree.path(); }
  ~ShowTest() override { deskhost::settings() = {}; }

  /// Compares all that can be asked about one job. Returns how many rows and how many origins were
  /// compared.
  std::pair<int, int> compare(const std::string& name, const std::string& text) {
    tree.write(name, text);
    check::CheckSession session(check::CheckSession::Readers::Fresh);
    session.check(name, text);
    const model::JobFormat format = model::formatOfName(name);
    const job::TracedJob& job = session.job(format);

    const bool isEmpty = job.bars.empty() || job.bars[0].pieces.empty();
    const std::string bar = isEmpty ? "1" : job.job.Bar[0].BarNumber;
    const std::string code = isEmpty ? "t7" : job.job.Bar[0].piece[0].BarCode;
    const struct {
      Question question;
      const char* command;
      std::string argument;
    } kRows[] = {
        {{Subject::Works, "", ""}, "get_work", ""},
        {{Subject::Works, code, ""}, "get_work", code},
        {{Subject::Cuts, "", ""}, "get_cut", ""},
        {{Subject::Cuts, "", bar}, "get_cut", bar},
        {{Subject::Holes, "", ""}, "get_hole", ""},
        {{Subject::Labels, "", ""}, "get_print", ""},
        {{Subject::Dimensions, code, ""}, "get_Dimensions", code},
        {{Subject::Bars, "", ""}, nullptr, ""},
        {{Subject::Bars, "", bar}, nullptr, ""},
    };
    std::pair<int, int> compared{0, 0};
    for (const auto& row : kRows) {
      // What was asked before shows in some answers, so each gets a plug-in of its own.
      const StdoutRedirect detour(StdoutRedirect::To::Nowhere);
      const script::Plugin plugin(CUS_PLUGIN);
      script::ScriptEngine engine(plugin, script::ModuleErrors::Guarded);
      if (!loads(engine, name)) return {0, 0};
      try {
        Table table = ask(engine, row.question);
        addOrigins(table, row.question, job, format);
        compared.first += static_cast<int>(table.rows.size());
        compared.second += compareOrigins(table, *session.report().sources[0]);
        if (row.command == nullptr) continue;
        EXPECT_EQ(tablesText(table), scriptsTables(engine, row.command, row.argument));
      } catch (const Error& error) {
        if (row.command == nullptr) continue;
        const std::string raised = scriptsTables(engine, row.command, row.argument);
        EXPECT_NE(std::string(error.what()).find(raised.substr(raised.rfind(": ") + 2)),
                  std::string::npos);
      }
    }
    return compared;
  }

  bool loads(script::ScriptEngine& engine, const std::string& name) {
    try {
      loadJob(engine, job::presentJob(tree.path(name)).name);
      return true;
    } catch (const Error&) {
      return false;
    }
  }

  static int compareOrigins(const Table& table, const job::SourceText& source) {
    int seen = 0;
    for (const std::vector<Cell>& row : table.rows) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i].origin.line == 0) continue;
        ++seen;
        EXPECT_TRUE(standsThere(row[i], source.line(row[i].origin.line)))
            << table.keys[i] << "=" << row[i].text << ", line " << row[i].origin.line << ": "
            << source.line(row[i].origin.line);
      }
    }
    return seen;
  }

  TempTree tree;
};

TEST_F(ShowTest, RowsAreThoseOfTheScriptAndEveryLineHoldsItsValue) {
  test_support::JsonJobs jsonJobs(kSeed);
  test_support::XmlJobs xmlJobs(kSeed);
  std::pair<int, int> all{0, 0};
  for (int i = 0; i < kJobs && !HasFailure(); ++i) {
    std::vector<int> lost;
    test_support::XmlElement xmlJob = xmlJobs.next();
    const bool isXml = i % 2 == 1;
    if (isXml && i % 4 == 1) {
      xmlJob.lines.insert(xmlJob.lines.begin(), {"<Version>1.0</Version>", "", ""});
    }
    const std::string text = isXml ? write(xmlJob) : jsonJobs.write(jsonJobs.next(), lost);
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", job " + std::to_string(i) + "\n" + text);
    const auto [rows, origins] = compare(isXml ? "job.xml" : "job.json", text);
    all.first += rows;
    all.second += origins;
  }
  EXPECT_GT(all.first, 4 * kJobs);
  EXPECT_GT(all.second, 20 * kJobs);
}

}  // namespace
