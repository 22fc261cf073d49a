#pragma once

#include "ImportResult.h"

#include <functional>

// Reads another tracker's data into an ImportResult. Readers never change a document; they are
// asked now and then how far they are, and stop with a cancelled result (no intervals at all)
// when the answer is false.
class ImportReader {
public:
    // Records done and records in all (0 while unknown); false to cancel.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    virtual ~ImportReader();
    // path is the file or folder the user chose.
    virtual ImportResult read(const QString &path, const Progress &progress = {}) const = 0;

    // Asks every so many records, so that the question costs nothing in a long loop.
    static bool goOn(const Progress &progress, qint64 done, qint64 total) {
        return !progress || done % 1000 != 0 || progress(done, total);
    }
};
