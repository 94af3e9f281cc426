#include "icon_provider.h"
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
        using namespace tessaly::controls;
        if (engine->imageProvider(QStringLiteral("resource")) != nullptr)
            return;
        engine->addImageProvider(QStringLiteral("resource"), new IconProvider(false));
        engine->addImageProvider(QStringLiteral("resource_inv_circle"), new IconProvider(true));
        KeyTranslator::instance()->serve(engine);
        static auto* const pictures = new PictureAccess; // outlives every engine
        if (engine->networkAccessManagerFactory() == nullptr)
            engine->setNetworkAccessManagerFactory(pictures);
    }
};

#include "plugin.moc"
