#include "desk/editor/module_notes.h"

#include "module/script_rows.h"

namespace desk::editor {

namespace {

template <class Row>
RowType rowType(const char* name, const char* text) {
  RowType type{name, text, {}};
  for (const row_keys::Key<Row>& key : script_rows::KeysOf<Row>::keys) {
    type.keys.push_back({key.key, key.cell.isNumber() ? "number" : "string", key.note});
  }
  for (std::size_t i = 0; i < script_rows::KeysOf<Row>::optional; ++i)
    type.keys[i].isOptional = true;
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
  using namespace script_rows;
  return {loadResult(),
          rowType<Work>("Work", "One machining work on a piece, a row of get_work."),
          rowType<Cut>("Cut", "One cut, a row of get_cut."),
          rowType<Hole>("Hole", "One distinct work of a JSON job, a row of get_hole."),
          rowType<Label>("Label", "The label of one piece, a row of get_print."),
          rowType<Dimensions>("Dimensions", "Dimensions of a piece, a row of get_Dimensions.")};
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
