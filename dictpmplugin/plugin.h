#pragma once

#include <QQmlExtensionPlugin>

/// What the QML engine loads for the module:
///
///     import com.tessaly.dictionaries 1.0
///
/// It is never linked and never made by hand, and holds nothing: its singletons live until the process ends.
class TSDictpmPlugin : public QQmlExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QQmlExtensionInterface/1.0")

public:
    /// Registers the module's classes, singletons and documents, all in version 1.0.
    void registerTypes(const char* uri) override;
};
