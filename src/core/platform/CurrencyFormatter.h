#pragma once

#include <QString>
#include <memory>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class NumberFormat;
U_NAMESPACE_END

// Money shown in the currency style of a locale (symbol, grouping and decimals of the locale).
// One instance is shared by the document and every pane that shows money.
class CurrencyFormatter {
public:
    // An empty locale name means the environment's (LC_MONETARY).
    explicit CurrencyFormatter(const QString &localeName = {});
    ~CurrencyFormatter();
    CurrencyFormatter(const CurrencyFormatter &) = delete;
    CurrencyFormatter &operator=(const CurrencyFormatter &) = delete;

    QString format(double amount) const;
    QString localeName() const { return m_localeName; }

    // A formatter of the environment's locale for values that have no formatter of their own.
    static const CurrencyFormatter &fallback();

private:
    QString m_localeName;
    std::unique_ptr<icu::NumberFormat> m_format;
};
