#pragma once

#include <QByteArray>
#include <QStringList>

#include <stdexcept>

class QFileDevice;

namespace tessaly::server {

/// What went wrong with a file, a database or an archive, in words for the operator.
class Failure : public std::runtime_error {
public:
    explicit Failure(const QString& message)
        : std::runtime_error(message.toStdString()) {}
    /// `action` is "read" or "write".
    Failure(const char* action, const QFileDevice& file);

    QString message() const { return QString::fromUtf8(what()); }
};

// These three throw Failure.
void makeDirectory(const QString& path);
QByteArray readFile(const QString& path);
/// In one step: whoever reads the file, and whatever happens, finds the old content or the new one.
void replaceFile(const QString& path, const QByteArray& content);

/// Removes the files of `directory` whose names are not among `wanted`.
void removeOthers(const QString& directory, const QStringList& wanted);

/// Size and modification time of the files as one text: it changes when one of the files does.
QString fileStamp(const QStringList& paths);

/// SHA-256 in hexadecimal digits.
QByteArray sha256(const QByteArray& data);
/// A short hexadecimal name for whatever the texts say together.
QString fingerprint(const QStringList& texts);

} // namespace tessaly::server
