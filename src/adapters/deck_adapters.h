#pragma once

#include "exchange/decks/deck_opening.h"
#include "platform/archive/zip_archives.h"
#include "platform/icu/icu_text_conversions.h"
#include "platform/qt_xml/qt_xml.h"
#include "platform/sqlite/sqlite_foreign_databases.h"

namespace cuedrill::adapters {

/// All adapters that decks of other programs are read with.
class DeckAdapters {
public:
    [[nodiscard]] decks::DeckTools tools() const
    {
        return {.conversions = conversions_, .archives = archives_, .databases = databases_, .xml = xml_};
    }

private:
    platform::icu::IcuTextConversions conversions_;
    platform::archive::ZipArchives archives_;
    platform::sqlite::SqliteForeignDatabases databases_;
    platform::qt_xml::QtXml xml_;
};

} // namespace cuedrill::adapters
