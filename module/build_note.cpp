// An ELF note in the plug-in: its version, and which libraries' classes it was compiled for.
//
// The host makes and the plug-in destroys objects of these classes, or the other way round: both
// must be compiled with the same layout. `strings` shows the note's lines, `cusdesk doctor`
// explains them.
#include <json/value.h>
#include <json/version.h>
#include <tinyxml2.h>

#include <cstdint>
#include <lua.hpp>

namespace {

/// "NAME VERSION CLASS SIZE LIBRARY", one line each; the plug-in's own has no class, and where only
/// headers were there the name of the library is left out.
struct Text {
  char bytes[256] = {};
  std::uint32_t size = 0;

  constexpr Text& operator<<(const char* text) {
    while (*text != '\0') bytes[size++] = *text++;
    return *this;
  }
  constexpr Text& operator<<(std::size_t number) {
    if (number >= 10) *this << number / 10;
    bytes[size++] = static_cast<char>('0' + number % 10);
    return *this;
  }
};

constexpr Text linesOfNote() {
  Text text;
  text << "libCustom_LuaParseModule " CUS_VERSION "\n";
  text << "jsoncpp " JSONCPP_VERSION_STRING " Json::Value " << sizeof(Json::Value)
       << " " CUS_JSONCPP_LIBRARY "\n";
  text << "tinyxml2 " << std::size_t{TIXML2_MAJOR_VERSION} << "."
       << std::size_t{TIXML2_MINOR_VERSION} << "." << std::size_t{TIXML2_PATCH_VERSION}
       << " tinyxml2::XMLDocument " << sizeof(tinyxml2::XMLDocument)
       << " " CUS_TINYXML2_LIBRARY "\n";
  text << LUA_VERSION << "\n";
  return text;
}

constexpr Text kText = linesOfNote();
constexpr std::uint32_t kNoteSize = (kText.size + 4) / 4 * 4;  // ends with a zero, is whole words

/// As ELF has notes.
struct Note {
  std::uint32_t ownerSize;
  std::uint32_t textSize;
  std::uint32_t type;
  char owner[16];
  char text[kNoteSize];
};

constexpr Note noteOf(const Text& text) {
  Note note{16, kNoteSize, 1, "cus_ParseModule", {}};
  for (std::uint32_t index = 0; index < text.size; ++index) note.text[index] = text.bytes[index];
  return note;
}

[[gnu::used, gnu::section(".note.cus_ParseModule")]] alignas(4) const Note kNote = noteOf(kText);

}  // namespace
