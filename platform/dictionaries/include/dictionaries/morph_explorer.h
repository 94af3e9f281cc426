#pragma once

#include <dictionaries/export.h>
#include <dictionaries/morph_file_existance_map.h>
#include <dictionaries/morph_url_map.h>

#include <string>

namespace tessaly::morphology {

/// Where the device keeps its morphology data.
class TESSALY_DICTIONARIES_API HunspellSearcher {
public:
    /// Device path of the folder.
    static std::string defaultDir();
};

} // namespace tessaly::morphology

namespace tessaly::dictionary {

/// Knows the key without which the server gives no morphology data.
class TESSALY_DICTIONARIES_API MorphSecretProvider : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// As the device's configuration has it now; empty when it has none. Any thread.
    Q_INVOKABLE QString apiKey() const;
};

/// Morphology data of the languages: what the server offers and what the device has. Owns its three parts.
/// GUI thread.
class TESSALY_DICTIONARIES_API MorphExplorer : public QObject {
    Q_OBJECT
    Q_PROPERTY(tessaly::dictionary::MorphUrlMap* urlMap READ urlMap CONSTANT)
    Q_PROPERTY(tessaly::dictionary::MorphFileExistanceMap* existanceMap READ existanceMap CONSTANT)
    Q_PROPERTY(tessaly::dictionary::MorphSecretProvider* apiKeyProvider READ apiKeyProvider CONSTANT)

public:
    /// `directory` is the device path of the folder that holds the morphology data.
    explicit MorphExplorer(const QString& directory, QObject* parent = nullptr);

    [[nodiscard]] MorphUrlMap* urlMap() const { return m_urlMap; }
    [[nodiscard]] MorphFileExistanceMap* existanceMap() const { return m_existanceMap; }
    [[nodiscard]] MorphSecretProvider* apiKeyProvider() const { return m_apiKeyProvider; }

    /// Whether morphology data for this language ("pt", "pt_BR") are on the device now.
    Q_INVOKABLE bool exists(const QString& iso) const;

private:
    MorphSecretProvider* m_apiKeyProvider;
    MorphUrlMap* m_urlMap;
    MorphFileExistanceMap* m_existanceMap;
};

} // namespace tessaly::dictionary
