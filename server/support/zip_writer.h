#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

struct archive;

namespace tessaly::server {

/// Writes a zip file entry by entry. Everything throws Failure; a file that was not closed is of no use.
/// Names are written as given, whatever a reader may think of them.
class ZipWriter {
public:
    explicit ZipWriter(const QString& path);

    void addData(const QString& name, const QByteArray& data);
    /// Streams the file in. With `flippedByte`, the byte at this offset is changed on the way, which gives an
    /// archive that is sound with content that is not.
    void addFile(const QString& name, const QString& path, std::optional<qint64> flippedByte = {});
    void addSymlink(const QString& name, const QString& target);
    void close();

private:
    struct Free {
        void operator()(archive* writer) const;
    };

    void check(int result) const;
    void write(const char* data, qint64 size);

    QString m_path;
    std::unique_ptr<archive, Free> m_archive;
};

} // namespace tessaly::server
