#include "desk/editor/module_notes.h"

#include <iterator>
#include <memory>
#include <stdexcept>

#include "module/script_rows.h"

namespace desk::editor {

namespace {

/// What a row key holds, in the order of the row's keys.
using Texts = std::vector<const char*>;

/// Whether scripts get the value as a number.
template <class Row>
bool isNumber(const lua_rows::RowKey<Row>& key) {
  const std::unique_ptr<lua_State, void (*)(lua_State*)> state(luaL_newstate(), lua_close);
  key.push(state.get(), Row{});
  return lua_type(state.get(), -1) == LUA_TNUMBER;
}

/// Puts the words to the keys of a row.
template <class Row, std::size_t count>
void addKeys(RowType& type, const lua_rows::RowKey<Row> (&keys)[count], const Texts& texts) {
  if (texts.size() != count) throw std::logic_error(std::string("keys of ") + type.name);
  for (std::size_t i = 0; i < count; ++i) {
    type.keys.push_back({keys[i].key, isNumber(keys[i]) ? "number" : "string", texts[i]});
  }
}

const Texts kDimensionTexts = {"width of the profile", "height of the profile",
                               "length of the piece"};
constexpr char kNeverFilled[] = "always empty";

RowType workRow() {
  RowType type{"Work", "One machining work on a piece, a row of get_work.", {}};
  addKeys(type, script_rows::kWorkOwner, {"barcode of the piece; only in rows of get_work(\"\")"});
  type.keys.back().isOptional = true;
  addKeys(type, script_rows::kWork,
          {"name of the operation", "position along the piece", "position across the profile",
           "position in height on the profile"});
  addKeys(type, script_rows::kDimensions, kDimensionTexts);
  return type;
}

RowType cutRow() {
  RowType type{"Cut", "One cut, a row of get_cut.", {}};
  addKeys(
      type, script_rows::kCut,
      {"number of the bar", "height of the profile: MaxZ of the first bar of the JSON job",
       "length of the bar", "length of the piece", "angle of the left end, degrees",
       "angle of the right end, degrees", "how many pieces the bar holds",
       "barcode of the piece; empty unless all cuts of a JSON job are asked for", "name of the bar",
       "highest bar number when all cuts of a JSON job were last asked for"});
  return type;
}

RowType holeRow() {
  RowType type{"Hole", "One distinct work of a JSON job, a row of get_hole.", {}};
  addKeys(type, script_rows::kHole,
          {"name of the operation", "length of the first piece that has it",
           "width of that piece's profile", "height of that piece's profile"});
  return type;
}

RowType labelRow() {
  RowType type{"Label", "The label of one piece, a row of get_print.", {}};
  addKeys(type, script_rows::kLabel,
          {"the piece's mark", "drawing of the profile's cross section", "length of the bar",
           "name of the bar", "colour of the bar", kNeverFilled, kNeverFilled,
           "what is left over of the bar", kNeverFilled, kNeverFilled,
           "the cut angles in the words of the label", kNeverFilled, kNeverFilled});
  return type;
}

RowType dimensionsRow() {
  RowType type{"Dimensions", "Dimensions of a piece, a row of get_Dimensions.", {}};
  addKeys(type, script_rows::kDimensions, kDimensionTexts);
  return type;
}

RowType loadResult() {
  return {"LoadResult",
          "What a loading function answers with.",
          {{"errorCode", "integer", "0, or what went wrong"},
           {"info", "string", "the same as a message in Chinese"}}};
}

}  // namespace

const char* const kModuleName = "cus_ParseModule";

const std::vector<FunctionNote>& functionNotes() {
  static const Parameter kFile = {"name", "file name of at least five bytes, with its extension"};
  static const Parameter kBarcode = {"barcode", "barcode of the piece"};
  static const std::vector<FunctionNote> kNotes = {
      {"getjson_Flash",
       "Loads a job file from the controller's flash. Names that end in .xml are XML jobs, all "
       "others JSON jobs.",
       {kFile},
       "LoadResult",
       "code and message"},
      {"getjson_uDisk",
       "Loads a job file from the USB disk. Names that end in .xml are XML jobs, all others JSON "
       "jobs.",
       {kFile},
       "LoadResult",
       "code and message"},
      {"getjson_url",
       "Downloads a JSON job to the flash and loads it. While an XML file is the current job it "
       "always fails.",
       {{"url", "http or https address"}, {"name", "name of the file to keep, without extension"}},
       "LoadResult",
       "code and message"},
      {"get_work",
       "The works of all pieces with a barcode, in file order.",
       {{"barcode", "barcode of the piece; \"\" for the works of all pieces"}},
       "Work[]",
       "one row for each work"},
      {"get_cut",
       "The cuts of all bars with a number, in file order.",
       {{"barNumber", "number of the bar; \"\" for the cuts of all bars"}},
       "Cut[]",
       "one row for each piece"},
      {"get_hole",
       "The distinct works of a JSON job by name, each with the dimensions of the first piece that "
       "has it.",
       {},
       "Hole[]",
       "one row for each name; none for an XML job"},
      {"get_print",
       "The labels of all pieces, in file order.",
       {},
       "Label[]",
       "one row for each piece"},
      {"get_Dimensions",
       "The dimensions of a piece, once for each of its works behind the last work of another "
       "piece. get_work(barcode) always has them.",
       {kBarcode},
       "Dimensions[]",
       "equal rows, often none"},
      {"save_cutCurIndex",
       "Writes two texts to the progress file, a line each.",
       {{"first", "first line"}, {"second", "second line"}},
       "string",
       "the second text, whether or not the file could be written"},
  };
  return kNotes;
}

std::vector<RowType> rowTypes() {
  return {loadResult(), workRow(), cutRow(), holeRow(), labelRow(), dimensionsRow()};
}

const std::vector<CodeNote>& codeNotes() {
  static const std::vector<CodeNote> kNotes = {
      {0, "loaded"},
      {-2, "no such file, or it is no document"},
      {-3, "the header declares no version \"1.0\""},
      {-4, "the bars could not be read: \"Version\" is another text while \"version\" is \"1.0\""},
      {-5, "the pieces could not be read"},
      {-6, "the works could not be read"},
  };
  return kNotes;
}

}  // namespace desk::editor
