#pragma once

#include "platform/xml.h"

#include <memory>

namespace cuedrill::platform::qt_xml {

/// XML files read with QXmlStreamReader. Needs QtCore only, no window.
class QtXml : public Xml {
public:
    [[nodiscard]] std::unique_ptr<XmlReading> begin(std::unique_ptr<FileReading> file) const override;
};

} // namespace cuedrill::platform::qt_xml
