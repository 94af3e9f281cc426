#pragma once

#include <QString>

namespace tessaly::server {

/// A file that others see whole or not at all: it is written under another name, unlike any other part's, and
/// takes its place in one step. What isn't put in place is removed at the end.
class PartFile {
public:
    explicit PartFile(const QString& finalPath);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// Where to write.
    const QString& path() const { return m_path; }

    /// Throws Failure.
    void putInPlace();

private:
    QString m_finalPath;
    QString m_path;
};

} // namespace tessaly::server
