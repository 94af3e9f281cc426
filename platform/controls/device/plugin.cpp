#include "image_providers.h"
#include "key_translator.h"
#include "picture_access.h"

#include <QQmlEngine>
#include <QQmlEngineExtensionPlugin>

// The types' registration, which nothing else in this file mentions.
extern void qml_register_types_com_tessaly_controls_device();
Q_GHS_KEEP_REFERENCE(qml_register_types_com_tessaly_controls_device)

/// Gives each engine that imports the control set its icons and its texts.
class TessalyControlsDevicePlugin : public QQmlEngineExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlEngineExtensionInterface_iid)

public:
    explicit TessalyControlsDevicePlugin(QObject* parent = nullptr)
        : QQmlEngineExtensionPlugin(parent) {
        volatile auto registration = &qml_register_types_com_tessaly_controls_device;
        Q_UNUSED(registration)
    }

    void initializeEngine(QQmlEngine* engine, const char*) override {
        if (engine->imageProvider(QStringLiteral("resource")) != nullptr)
            return;
        engine->addImageProvider(QStringLiteral("resource"), new tessaly::controls::IconProvider);
        engine->addImageProvider(QStringLiteral("resource_inv_circle"),
                                 new tessaly::controls::DiscIconProvider);
        tessaly::controls::KeyTranslator::instance()->serve(engine);
        static auto* const pictures = new tessaly::controls::PictureAccess; // outlives every engine
        if (engine->networkAccessManagerFactory() == nullptr)
            engine->setNetworkAccessManagerFactory(pictures);
    }
};

#include "plugin.moc"
