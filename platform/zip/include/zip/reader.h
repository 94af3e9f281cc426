#pragma once

#include <base/library.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessaly::zip {

/// Why an archive isn't read on.
class Error : public std::runtime_error {
public:
    enum class Kind {
        Unreadable, ///< absent, not a plain file, or the disk failed to read it
        Damaged,    ///< no zip archive, cut short, or damaged inside
        BadEntry,   ///< an entry that is no plain file or has no name, or too many of them
    };
    Error(Kind kind, const std::string& text)
        : std::runtime_error(text)
        , m_kind(kind) {}

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

/// An open zip archive, read entry by entry:
///
///     const auto archive = zip::Reader::open(hostPath);
///     while (const auto entry = archive->next())
///         for (std::string_view piece; !(piece = archive->read()).empty();)
///             ...
///
/// Plain files only, a few thousand at most, without encryption, comments or more than 4 GiB. Names and sizes
/// are what the archive claims: they are the caller's to check, and no file is made of them here. Functions
/// throw an Error, or std::bad_alloc. One thread.
class Reader {
public:
    /// Host path. An archive that was cut short is refused here. Names beyond ASCII need a UTF-8 locale. What
    /// reads archives is loaded with the first one: libarchive brings libraries that whoever shows a list
    /// does without. Throws std::runtime_error if it can't be loaded.
    static std::unique_ptr<Reader> open(const std::string& hostPath) {
        using Open = Reader*(const std::string&);
        static Open* const open =
            reinterpret_cast<Open*>(base::loadSymbol("tessaly_zip", "tessaly_openArchive"));
        return std::unique_ptr<Reader>(open(hostPath));
    }

    Reader() = default;
    virtual ~Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    struct Entry {
        std::string name; ///< UTF-8; may be any path
        std::int64_t size = 0;
    };
    /// Goes on to the next entry; nothing at the end.
    [[nodiscard]] virtual std::optional<Entry> next() = 0;

    /// The next piece of the current entry, which stays until the next call; empty at its end. There may be
    /// more bytes than the entry's size says, and a wrong checksum only shows at the end.
    [[nodiscard]] virtual std::string_view read() = 0;

    /// Reads on to the entry's end, or until there are so many bytes.
    [[nodiscard]] virtual std::string readRest(std::size_t most) = 0;

    enum class Checksums {
        Compared,
        Ignored, ///< by whoever has better ones
    };
    /// Back to before the first entry. What is read then is held against the archive's checksums, or not.
    virtual void rewind(Checksums checksums) = 0;
};

} // namespace tessaly::zip
