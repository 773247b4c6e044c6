// The script functions: the index of this folder.
//
// A row is a function's command and what it is in words. Stub, manual and doctor take the words,
// registration the rest, so neither carries what is the other's.
#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

#include "module/load_commands.h"
#include "module/progress_command.h"
#include "module/query_commands.h"

namespace script_functions {

struct Parameter {
  const char* name;
  const char* text;  ///< all parameters are texts
};

/// What a function is in words. Parameters without a name are not there.
struct Words {
  const char* name;
  const char* text;  ///< one or two sentences
  Parameter parameters[2];
  const char* result;      ///< "string", the name of a row type, or that with "[]"
  const char* resultText;  ///< what the result holds
};

struct Function {
  int (*command)(lua_State* L);
  Words words;
};

// --- names fixed by the scripts ------------------------------------------------------------------

inline constexpr Parameter kFile = {"name", "file name of at least five bytes, with its extension"};
inline constexpr char kLoadResult[] = "LoadResult";
inline constexpr char kLoadResultText[] = "code and message";

inline constexpr Function kFunctions[] = {
    {getWorkCommand,
     {"get_work",
      "The works of all pieces with a barcode, in file order.",
      {{"barcode", "barcode of the piece; \"\" for the works of all pieces"}},
      "Work[]",
      "one row for each work"}},
    {getCutCommand,
     {"get_cut",
      "The cuts of all bars with a number, in file order.",
      {{"barNumber", "number of the bar; \"\" for the cuts of all bars"}},
      "Cut[]",
      "one row for each piece"}},
    {getHoleCommand,
     {"get_hole",
      "The distinct works of a JSON job by name, each with the dimensions of the first piece that "
      "has it.",
      {},
      "Hole[]",
      "one row for each name; none for an XML job"}},
    {getPrintCommand,
     {"get_print",
      "The labels of all pieces, in file order.",
      {},
      "Label[]",
      "one row for each piece"}},
    {getDimensionsCommand,
     {"get_Dimensions",
      "The dimensions of a piece, once for each of its works behind the last work of another "
      "piece. get_work(barcode) always has them.",
      {{"barcode", "barcode of the piece"}},
      "Dimensions[]",
      "equal rows, often none"}},
    {getjsonUDiskCommand,
     {"getjson_uDisk",
      "Loads a job file from the USB disk. Names that end in .xml are XML jobs, all others JSON "
      "jobs.",
      {kFile},
      kLoadResult,
      kLoadResultText}},
    {getjsonFlashCommand,
     {"getjson_Flash",
      "Loads a job file from the controller's flash. Names that end in .xml are XML jobs, all "
      "others JSON jobs.",
      {kFile},
      kLoadResult,
      kLoadResultText}},
    {getjsonUrlCommand,
     {"getjson_url",
      "Downloads a JSON job to the flash and loads it. While an XML file is the current job it "
      "always fails.",
      {{"url", "http or https address"}, {"name", "name of the file to keep, without extension"}},
      kLoadResult,
      kLoadResultText}},
    {saveCutCurIndexCommand,
     {"save_cutCurIndex",
      "Writes two texts to the progress file, a line each.",
      {{"first", "first line"}, {"second", "second line"}},
      "string",
      "the second text, whether or not the file could be written"}},
};

// -------------------------------------------------------------------------------------------------

constexpr bool areDescribed() {
  for (const Function& function : kFunctions) {
    const Words& words = function.words;
    // Reading a text that is not there does not compile.
    if (*words.text == '\0' || *words.result == '\0' || *words.resultText == '\0') return false;
  }
  return true;
}
static_assert(areDescribed(), "a function says what it is for and what it answers with");

template <std::size_t count>
struct WordsTable {
  Words rows[count];
};

template <std::size_t... i>
constexpr WordsTable<sizeof...(i)> wordsOf(std::index_sequence<i...>) {
  return {{kFunctions[i].words...}};
}

/// The words alone, in the order of the functions.
inline constexpr auto kWords = wordsOf(std::make_index_sequence<std::size(kFunctions)>());

}  // namespace script_functions
