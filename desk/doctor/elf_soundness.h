// Whether an ELF file is one that a loader could take at all.
#pragma once

#include <string>

#include "desk/script/elf_image.h"

namespace desk::doctor {

/// Throws Error with one sentence where headers contradict themselves or each other, and where the
/// sections are missing that say what the file needs and offers: it would pass for one that needs
/// and offers nothing. `path` is for the sentence.
///
/// What the headers do not show, such as damaged code, only a checksum finds.
void requireSound(const script::ElfImage& image, const std::string& path);

}  // namespace desk::doctor
