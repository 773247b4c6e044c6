// The Lua table `panel` in words, for editors. docs/panel.md is its manual.
#pragma once

namespace desk::panel {

/// A parameter of a function. Types are those of LuaCATS annotations.
struct Parameter {
  const char* name;  ///< with a "?" behind it where it may be left out
  const char* type;
  const char* text;
};

/// A function of the table. Parameters without a name are not there.
struct FunctionWords {
  const char* name;
  const char* text;
  Parameter parameters[3];
  const char* results[2];  ///< types and names; null for none
  const char* overload;    ///< a second way to call it; null for none
};

inline constexpr FunctionWords kFunctionWords[] = {
    {"grid",
     "Sets the rows of a page, the columns and their widths.",
     {{"rows", "integer", "rows of a page, up to 65535"},
      {"cols", "integer", "columns"},
      {"widths?", "string", "one digit for each column with \":\" between, such as \"2:1:1\""}},
     {},
     nullptr},
    {"head",
     "Sets the texts of the head.",
     {{"titles", "any[]", "one for each column"}},
     {},
     nullptr},
    {"rows",
     "Says what there is to show. A function is called with the first and the last row to show.",
     {{"list", "any[][]|fun(first: integer, last: integer): any[][]",
       "rows, each a list of cells"}},
     {},
     nullptr},
    {"update",
     "Shows the rows of the current page.",
     {{"total?", "integer", "how many rows there are; without it the length of the list"}},
     {},
     nullptr},
    {"page",
     "The current page and how many there are; with a direction, turns the page.",
     {},
     {"integer current", "integer count"},
     "fun(direction: \"up\"|\"down\"): boolean"},
    {"index", "The number of the selected row in the whole list.", {}, {"integer? index"}, nullptr},
    {"order",
     "Sets what stands at the top: 0 the first row, 1 the last one.",
     {{"order", "0|1", "follow it with panel.update"}},
     {},
     nullptr},
    {"reset", "Back to an empty table.", {}, {}, nullptr},
};

/// A field of the table: a value that a script finds there, or a handler that it may set.
struct FieldWords {
  const char* name;
  const char* type;
  const char* text;
  bool isOptional;
  bool isHandler;
};

inline constexpr FieldWords kFieldWords[] = {
    {"job", "string", "what to give to getjson_Flash for the file given with --job", true, false},
    {"width", "integer", "of the table, in pixels", false, false},
    {"height", "integer", "of the table, in pixels", false, false},
    {"on_click", "fun(index?: integer)", "a row was clicked; nil when nothing is in it", true,
     true},
    {"on_page", "fun(direction: \"up\"|\"down\")", "a page key; without it the page is turned",
     true, true},
    {"on_job", "fun()", "a job file that was read has changed; without it the script starts anew",
     true, true},
};

}  // namespace desk::panel
