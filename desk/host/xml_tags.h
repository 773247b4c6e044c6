// A first look at XML text, before the library builds anything from it.
#pragma once

#include <string_view>

#include "desk/host/documents.h"

namespace deskhost {

/// Walks over the tags of `text`, in time proportional to its size, and finds what the XML library
/// would pay dearly for or pass over in silence: an element with more than `maxXmlAttributes`
/// attributes, an end tag where no element is open, bytes after a zero byte. Says nothing about
/// text that is not well formed otherwise.
/// @return whether none of these was found; otherwise `fault` is set
bool checkXmlTags(std::string_view text, DocumentFault& fault);

}  // namespace deskhost
