#include "VCardReader.h"

#include "../Logging.h"

#include <QHash>
#include <QStringDecoder>
#include <optional>

namespace {

struct Property {
    QByteArray name;                          // upper case, without a group
    QHash<QByteArray, QByteArray> parameters; // names and values upper case
    QByteArray value;
};

bool startsWithBlank(const QByteArray &line) {
    return line.startsWith(' ') || line.startsWith('\t');
}

qsizetype colonOutsideQuotes(const QByteArray &line) {
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted)
            return i;
    }
    return -1;
}

bool isQuotedPrintable(const QByteArray &line) {
    const qsizetype colon = colonOutsideQuotes(line);
    return colon > 0 && line.left(colon).toUpper().contains("QUOTED-PRINTABLE");
}

// Joins the physical lines into logical ones: a line break followed by a blank or a tab continues
// the line (the blank is dropped), and so does a quoted-printable value's "=" at the line's end.
QList<QByteArray> logicalLines(const QByteArray &data) {
    QList<QByteArray> physical = data.split('\n');
    for (QByteArray &line : physical) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    QList<QByteArray> lines;
    for (qsizetype i = 0; i < physical.size(); ++i) {
        QByteArray line = physical[i];
        while (i + 1 < physical.size()) {
            if (line.endsWith('=') && isQuotedPrintable(line)) {
                line.chop(1);
                line += physical[++i];
            } else if (startsWithBlank(physical[i + 1])) {
                line += physical[++i].mid(1);
            } else {
                break;
            }
        }
        lines.append(line);
    }
    return lines;
}

std::optional<Property> parseProperty(const QByteArray &line) {
    const qsizetype colon = colonOutsideQuotes(line);
    if (colon <= 0)
        return std::nullopt;
    Property property;
    property.value = line.mid(colon + 1);
    QList<QByteArray> header;
    bool quoted = false;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= colon; ++i) {
        if (i < colon && line[i] == '"') {
            quoted = !quoted;
        } else if (i == colon || (line[i] == ';' && !quoted)) {
            header.append(line.mid(start, i - start).trimmed());
            start = i + 1;
        }
    }
    property.name = header.takeFirst().toUpper();
    property.name = property.name.mid(property.name.lastIndexOf('.') + 1);
    for (const QByteArray &parameter : std::as_const(header)) {
        const qsizetype equals = parameter.indexOf('=');
        QByteArray value = parameter.mid(equals + 1).toUpper();
        value.replace('"', QByteArray());
        if (equals >= 0)
            property.parameters.insert(parameter.left(equals).trimmed().toUpper(), value);
        else // a bare value of version 2.1: an encoding or a type
            property.parameters.insert(
                value == "BASE64" || value == "QUOTED-PRINTABLE" ? "ENCODING" : "TYPE", value);
    }
    return property;
}

QByteArray fromQuotedPrintable(const QByteArray &text) {
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool ok = false;
        const int byte = text[i] == '=' ? text.mid(i + 1, 2).toInt(&ok, 16) : 0;
        if (ok && i + 2 < text.size()) {
            bytes.append(char(byte));
            i += 2;
        } else {
            bytes.append(text[i]);
        }
    }
    return bytes;
}

// The value's components, split at the semicolons that are not escaped, each with its escaped
// characters (\\, \n, \N, \, and \;) resolved.
QStringList componentsOf(const Property &property) {
    QByteArray bytes = property.value;
    if (property.parameters.value("ENCODING") == "QUOTED-PRINTABLE")
        bytes = fromQuotedPrintable(bytes);
    const auto encoding =
        QStringConverter::encodingForName(property.parameters.value("CHARSET").constData());
    const QString text = QStringDecoder(encoding.value_or(QStringConverter::Utf8)).decode(bytes);

    QStringList components{QString()};
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size()) {
            const QChar next = text[++i];
            components.last() += next == u'n' || next == u'N' ? QChar(u'\n') : next;
        } else if (text[i] == u';') {
            components.append(QString());
        } else {
            components.last() += text[i];
        }
    }
    return components;
}

QString textOf(const Property &property) {
    return componentsOf(property).join(u';');
}

// An inline picture: base64 data (2.1 "BASE64", 3.0 "b") or a "data:" address (4.0). Pictures
// given by a link elsewhere are not fetched.
QImage photoOf(const Property &property) {
    const QByteArray value = property.value.trimmed();
    QByteArray bytes;
    if (value.left(5).toLower() == "data:") {
        const qsizetype comma = value.indexOf(',');
        if (comma < 0)
            return {};
        const QByteArray payload = value.mid(comma + 1);
        bytes = value.left(comma).toLower().endsWith(";base64")
                    ? QByteArray::fromBase64(payload)
                    : QByteArray::fromPercentEncoding(payload);
    } else if (const QByteArray encoding = property.parameters.value("ENCODING");
               encoding == "B" || encoding == "BASE64") {
        bytes = QByteArray::fromBase64(value);
    } else {
        return {};
    }
    const QImage image = QImage::fromData(bytes);
    if (image.isNull())
        qCWarning(lcStores) << "the photo of an address card cannot be decoded and is left out";
    return image;
}

} // namespace

QList<VCardReader::Person> VCardReader::read(const QByteArray &data) {
    QList<Person> people;
    std::optional<Person> person;
    bool hasStructuredName = false;
    QString formattedName;
    QByteArray bytes = data;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    for (const QByteArray &line : logicalLines(bytes)) {
        const std::optional<Property> property = parseProperty(line);
        if (!property)
            continue;
        const QByteArray &name = property->name;
        if (name == "BEGIN" && property->value.trimmed().toUpper() == "VCARD") {
            if (person)
                qCWarning(lcStores) << "an address card without an end is left out";
            person = Person();
            hasStructuredName = false;
            formattedName.clear();
        } else if (!person) {
            continue;
        } else if (name == "END") {
            if (!hasStructuredName)
                person->firstName = formattedName;
            people.append(*person);
            person.reset();
        } else if (name == "N") {
            const QStringList parts = componentsOf(*property);
            person->lastName = parts.value(0).trimmed();
            person->firstName = parts.value(1).trimmed();
            hasStructuredName = true;
        } else if (name == "FN") {
            formattedName = textOf(*property).trimmed();
        } else if (name == "ORG") {
            person->organization = componentsOf(*property).value(0).trimmed();
        } else if (name == "PHOTO") {
            person->image = photoOf(*property);
        } else if (name == "UID") {
            person->uniqueId = textOf(*property).trimmed();
        }
    }
    if (person)
        qCWarning(lcStores) << "an address card without an end is left out";
    return people;
}
