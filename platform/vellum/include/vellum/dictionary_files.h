#pragma once

#include <vellum/export.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vellum {

/// Where a device keeps dictionaries, in the order they are looked through; device paths.
inline constexpr std::array<std::string_view, 4> dictionaryFolders = {
    "/ebrmain/dictionaries", "/mnt/secure/dictionaries", "/mnt/ext1/system/dictionaries",
    "/mnt/ext2/system/dictionaries"};

/// A dictionary's name is its file's name without this suffix.
inline constexpr std::string_view dictionarySuffix = ".tsdict";

/// The first file of this name in a package tells which dictionaries it holds. It has at most so many bytes.
inline constexpr std::string_view manifestName = "manifest.json";
inline constexpr std::size_t maxManifestBytes = std::size_t{1} << 20;

/// Whether a dictionary's file may bear this name: UTF-8 that fits every file system of a device, with
/// something before the suffix. Not with a leading dot, which would hide it and marks unfinished files; not
/// with a character that separates paths or lines, changes the direction of writing or isn't seen, which
/// would let the name pose as another. One rule for whoever offers, installs or lists dictionaries.
[[nodiscard]] TESSALY_VELLUM_API bool isDictionaryFileName(const std::string& name);

} // namespace vellum
