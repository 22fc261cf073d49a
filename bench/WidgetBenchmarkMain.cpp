// The main() of the benchmarks that make widgets: an application on the offscreen platform unless
// another is asked for, and test paths so that no user's settings are read or written.

#include <QApplication>
#include <QStandardPaths>
#include <benchmark/benchmark.h>

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
