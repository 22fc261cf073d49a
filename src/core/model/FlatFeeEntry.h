#pragma once

#include "ProjectItem.h"

// A fixed amount booked on a day. It answers the timed questions like a finished day entry of no
// duration, and enters money totals only as its amount.
class FlatFeeEntry : public ProjectItem {
public:
    FlatFeeEntry();

    Kind kind() const override { return Kind::FlatFee; }

    float amount() const { return amount_; }
    void setAmount(float amount) { amount_ = amount; }

    bool hasPeriod() const override { return false; }
    bool isWorking() const override { return false; }
    bool isPaused() const override { return false; }
    int time() const override { return 0; }
    int pauseTime() const override { return 0; }
    int effectiveDuration() const override { return 0; }
    QDateTime fromDateAsDate() const override;
    QDateTime toDateAsDate() const override;

    // A value holder: day, comment, tags and amount; no check mark, attachments or project.
    std::shared_ptr<FlatFeeEntry> copy() const;
    std::shared_ptr<ProjectItem> copyItem() const override { return copy(); }
    static const QStringList &copyKeys();
    QVariantMap dictionaryRepresentation() const override;
    // "day;amount with six decimals;comment;tags".
    QString stringDescription() const override;
    QVariant valueForKey(QStringView key) const override;

private:
    float amount_ = 0.0f;
};
