#pragma once

#include <base/file.h>
#include <zip/export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

struct archive;

namespace tessaly::zip {

/// Why an archive isn't read on.
class TESSALY_ZIP_API Error : public std::runtime_error {
public:
    enum class Kind {
        Unreadable, ///< absent, not a plain file, or the disk failed to read it
        Damaged,    ///< no zip archive, cut short, or damaged inside
        BadEntry,   ///< an entry that is no plain file or has no name, or too many of them
    };
    Error(Kind kind, const std::string& text)
        : std::runtime_error(text)
        , m_kind(kind) {}
    ~Error() override;

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

/// An open zip archive, read entry by entry:
///
///     zip::Reader archive(hostPath);
///     while (const auto entry = archive.next())
///         while (const std::size_t count = archive.read(buffer))
///             ...
///
/// Plain files only, a few thousand at most, without encryption, comments or more than 4 GiB. Names and sizes
/// are what the archive claims: they are the caller's to check, and no file is made of them here. Functions
/// throw an Error, or std::bad_alloc. One thread.
class TESSALY_ZIP_API Reader {
public:
    /// Host path. An archive that was cut short is refused here. Names beyond ASCII need a UTF-8 locale.
    explicit Reader(const std::string& hostPath);

    struct Entry {
        std::string name; ///< UTF-8; may be any path
        std::int64_t size = 0;
    };
    /// Goes on to the next entry; nothing at the end.
    [[nodiscard]] std::optional<Entry> next();

    /// Reads on in the current entry and returns how many bytes; 0 at its end. There may be more of them than
    /// the entry's size says, and a wrong checksum only shows at the end.
    [[nodiscard]] std::size_t read(std::span<char> buffer);

    /// Back to before the first entry.
    void rewind();

private:
    struct Free {
        void operator()(archive* handle) const;
    };

    base::FileDescriptor m_file;
    std::unique_ptr<archive, Free> m_archive;
};

} // namespace tessaly::zip
