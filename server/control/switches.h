#pragma once

#include "packages/package_builder.h"

#include <QJsonObject>
#include <QSet>
#include <QString>

namespace tessaly::server {

/// How the server misbehaves, for tests of the device's side. As made, it doesn't. What each switch may be
/// and does is in the server's README.
struct Switches {
    int delayMs = 0; ///< before every answer
    QString catalogue = QStringLiteral("normal");
    QSet<int> unlisted; ///< record numbers left out of the catalogue
    QString packageRequest = QStringLiteral("normal");
    QString packageState = QStringLiteral("normal");
    QString packageFault = QStringLiteral("normal");
    int packageBuildMs = 0;    ///< how much longer a build takes
    qint64 bytesPerSecond = 0; ///< of a package's download; 0: as fast as it goes

    PackageFault builtInFault() const;

    /// Sets the switches named in `object`; says what is wrong with it, and then has changed nothing.
    QString apply(const QJsonObject& object);
    QJsonObject toJson() const;
};

/// The status N of a switch that reads "status:N", otherwise 0.
int statusOf(const QString& mode);

} // namespace tessaly::server
