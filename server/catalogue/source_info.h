#pragma once

#include "dictd/dictd_info.h"

#include <QJsonObject>
#include <QString>

namespace tessaly::server {

/// What is known of one pair of dictd files, or why it can't be used. Worth keeping: finding it out takes
/// reading the whole dictionary.
struct SourceInfo {
    QString indexPath;
    QString stamp; ///< of both files
    DictdInfo info;
    qint64 packageSize = 0; ///< bytes, estimated
    QString error;          ///< not empty: the pair is damaged

    QJsonObject toJson() const;
    static SourceInfo fromJson(const QJsonObject& object);
};

} // namespace tessaly::server
