// How the names of keys and values become names of folders and files, and back.
//
// A name is folded to one case first, for the registry tells no cases apart. Then everything but small letters,
// digits and a few signs is written as %XX of its UTF-8 bytes: no name can be "..", hold a "/", or mean something to a
// file system. Long names are cut and carry a hash of the whole, so that every name of the permitted length fits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rastel::platform::registry {

inline constexpr std::size_t mostKeyNameUnits = 255;
inline constexpr std::size_t mostValueNameUnits = 16383;

// Names of files that are neither key nor value; no escaped name begins with a dot.
inline constexpr std::string_view temporaryPrefix = ".new-";
inline constexpr std::string_view displayNameFile = ".name";   // a key's name in its own cases

std::wstring Folded(std::wstring_view name);

// Reversible, in ASCII, on one line. Nothing for units that are no characters.
std::optional<std::string> Escaped(std::wstring_view name);
std::optional<std::wstring> Unescaped(std::string_view escaped);

// Nothing where the name is too long, empty for a key, or no text.
std::optional<std::string> KeyFolder(std::wstring_view name);
std::optional<std::string> ValueFile(std::wstring_view name);

// Whether an entry of a folder has the form that these give; what it is named inside decides the rest.
bool LooksLikeKeyFolder(std::string_view entry);
bool LooksLikeValueFile(std::string_view entry);

// The folded name that a key's folder stands for; nothing where the folder's name holds only a part of it.
std::optional<std::wstring> NameOfKeyFolder(std::string_view folder);

}   // namespace rastel::platform::registry
