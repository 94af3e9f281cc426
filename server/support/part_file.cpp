#include "support/part_file.h"

#include "support/failure.h"

#include <QFile>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tessaly::server {

PartFile::PartFile(const QString& finalPath)
    : m_finalPath(finalPath)
    , m_path(QStringLiteral("%1.%2.part").arg(finalPath, QUuid::createUuid().toString(QUuid::Id128))) {}

PartFile::~PartFile() {
    QFile::remove(m_path);
}

void PartFile::putInPlace() {
    if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(m_finalPath).constData()) != 0)
        throw Failure(QStringLiteral("cannot put %1 in place: %2")
                          .arg(m_finalPath, QString::fromLocal8Bit(std::strerror(errno))));
}

} // namespace tessaly::server
