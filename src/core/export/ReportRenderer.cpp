#include "ReportRenderer.h"

ReportRenderer::~ReportRenderer() = default;
