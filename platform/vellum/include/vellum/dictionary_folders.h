#pragma once

#include <array>
#include <string_view>

namespace vellum {

/// Where a device keeps dictionaries, in the order they are looked through; device paths.
inline constexpr std::array<std::string_view, 4> dictionaryFolders = {
    "/ebrmain/dictionaries", "/mnt/secure/dictionaries", "/mnt/ext1/system/dictionaries",
    "/mnt/ext2/system/dictionaries"};

/// A dictionary's name is its file's name without this ending.
inline constexpr std::string_view dictionaryEnding = ".tsdict";

} // namespace vellum
