#pragma once

#include "ImportReader.h"

// Watson's "frames" file, a JSON array of frames [start, stop, project, id, tags, updated_at]
// with moments as seconds since the epoch, and the "state" file beside it, {project, start, tags}
// while a frame runs ({} otherwise). The path is the folder that holds them or the frames file.
class WatsonReader : public ImportReader {
public:
    ImportResult read(const QString &path, const Progress &progress = {}) const override;
};
