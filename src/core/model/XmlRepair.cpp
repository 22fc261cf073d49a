#include "XmlRepair.h"

#include <algorithm>
#include <cctype>
#include <cstring>

QByteArray XmlRepair::repairCommonFaults(const QByteArray &bytes) {
    QByteArray out;
    out.reserve(bytes.size() + 64);
    const char *p = bytes.constData();
    const char *end = p + bytes.size();
    const auto startsWith = [&](const char *at, const char *text) {
        const size_t n = std::strlen(text);
        return size_t(end - at) >= n && std::memcmp(at, text, n) == 0;
    };
    const auto isReference = [&](const char *at) {
        // at points after the "&": "#123;", "#x1F;" or "name;".
        const char *q = at;
        if (q < end && *q == '#') {
            ++q;
            const bool hex = q < end && *q == 'x';
            if (hex)
                ++q;
            const char *digits = q;
            while (q < end && (std::isdigit(uchar(*q)) || (hex && std::isxdigit(uchar(*q)))))
                ++q;
            return q > digits && q < end && *q == ';';
        }
        if (q >= end || !(std::isalpha(uchar(*q)) || *q == '_' || *q == ':'))
            return false;
        while (q < end &&
               (std::isalnum(uchar(*q)) || *q == '_' || *q == ':' || *q == '.' || *q == '-'))
            ++q;
        return q < end && *q == ';';
    };
    while (p < end) {
        if (*p == '<' && startsWith(p, "<![CDATA[")) {
            const char *close = std::search(p, end, "]]>", "]]>" + 3);
            const char *stop = close == end ? end : close + 3;
            out.append(p, stop - p);
            p = stop;
            continue;
        }
        const uchar c = uchar(*p);
        if (c == '&' && !isReference(p + 1))
            out += "&amp;";
        else if (c >= 0x20 || c == '\t' || c == '\n' || c == '\r')
            out += char(c);
        ++p;
    }
    return out;
}
