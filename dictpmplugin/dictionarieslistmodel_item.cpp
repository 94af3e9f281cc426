#include "dictionarieslistmodel.h"

#include <base/log.h>
#include <dictionaries/dictionary_file.h>

#include <ostream>

namespace tessaly::dictionary {

namespace {

DictionaryInfo describe(const vl_api::Dictionary& dictionary) {
    DictionaryInfo info;
    info.name = dictionary.name;
    info.file = dictionary.file;
    const auto opened = open(dictionary.absolutePath());
    if (opened.isLeft()) {
        log::cb::warn(__FILE__, __LINE__, __PRETTY_FUNCTION__, [&](std::ostream& out) -> std::ostream& {
            return out << "Failed to open dictionary to get metadata: " << opened.getLeft();
        });
        return info;
    }
    if (const auto& metadata = opened.getRight().metadata()) {
        info.version = metadata->version;
        info.languageFrom = metadata->languageFrom;
        info.languageTo = metadata->languageTo;
        info.thumbnail = metadata->thumbnail;
        info.description = metadata->description;
        info.category = metadata->category;
        info.provider = metadata->provider;
        info.publishDate = metadata->publishDate;
        info.dictSet = metadata->dictSet;
    }
    return info;
}

} // namespace

std::vector<DictionariesListModel::Item>
DictionariesListModel::Item::vectorFromDictionaries(const std::vector<DictionaryInfo>& records,
                                                    bool installed) {
    std::vector<Item> items;
    items.reserve(records.size());
    for (const DictionaryInfo& record : records)
        items.push_back({record, false, installed});
    return items;
}

std::vector<DictionariesListModel::Item>
DictionariesListModel::Item::vectorFromVlDictionaries(const vl_api::DictionariesBimap& dictionaries,
                                                      bool installed) {
    std::vector<Item> items;
    items.reserve(dictionaries.size());
    for (const vl_api::Dictionary& dictionary : dictionaries)
        items.push_back({describe(dictionary), false, installed});
    return items;
}

} // namespace tessaly::dictionary
