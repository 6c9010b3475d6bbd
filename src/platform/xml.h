#pragma once

#include "platform/files.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// An XML file in UTF-8, or in ISO-8859-1 if it says so, read forward token by token. Comments and processing
/// instructions are skipped. Nothing outside the file is read, and the only entities are the predefined ones and the
/// numbers of characters.
class XmlReading {
public:
    enum class Token {
        start, ///< an element begins
        text,  ///< text, or a part of it
        end,   ///< an element ends
        finish ///< the end of the file
    };

    XmlReading() = default;
    XmlReading(const XmlReading&) = delete;
    XmlReading& operator=(const XmlReading&) = delete;
    virtual ~XmlReading() = default;

    /// Reads the next token. An element without contents gives `start` and `end`.
    /// @throws common::Error with the line when the file is not well-formed XML, defines entities, or has an element
    /// or a text of more than about 64 KiB, or too many elements within each other; also when it cannot be read. Call
    /// nothing afterwards.
    [[nodiscard]] virtual Token next() = 0;

    /// Name of the element that begins or ends, with its prefix.
    [[nodiscard]] virtual const std::string& name() const = 0;

    /// An attribute of the element that begins; std::nullopt if it has none of that name.
    [[nodiscard]] virtual std::optional<std::string> attribute(std::string_view name) const = 0;

    /// The text in UTF-8. A line end is LF.
    [[nodiscard]] virtual const std::string& text() const = 0;

    /// The line that is being read, counted from 1.
    [[nodiscard]] virtual std::int64_t line() const = 0;

    /// How many bytes of the file have been read.
    [[nodiscard]] virtual std::uint64_t bytes_read() const = 0;
};

/// Reads XML files.
class Xml {
public:
    virtual ~Xml() = default;

    /// Reads nothing yet.
    [[nodiscard]] virtual std::unique_ptr<XmlReading> begin(std::unique_ptr<FileReading> file) const = 0;
};

} // namespace cuedrill::platform
