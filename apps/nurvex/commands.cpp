#include "apps/nurvex/commands.h"

#include "apps/nurvex/graph_file.h"
#include "apps/nurvex/progress.h"
#include "apps/nurvex/series.h"

#include <QGuiApplication>

#include <iostream>

namespace nurvex {

namespace {

/// Qt asks for its texts and fonts what a program with windows asks for, and complains where the
/// answers are missing; a picture needs none of that.
void ignore_remark(QtMsgType /*type*/, const QMessageLogContext& /*where*/,
                   const QString& /*text*/) {}

std::string many(std::size_t number, const std::string& thing) {
    return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

} // namespace

void RunDraw(const DrawOptions& options) {
    Series series(options.output, options.steps.size() + 1);
    series.Spare(options.input);
    Progress progress;
    progress.SetStage("reading");
    const GraphFile file(options.input);
    progress.SetStage("checking");
    file.Check([&progress] { progress.Stop(); });
    series.Rehearse(file, options.steps);

    // Pictures need fonts, but no display: the application works without one at all times.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(ignore_remark);
    int no_words = 0;
    const QGuiApplication application(no_words, nullptr);

    const std::string remark = series.Draw(file, options, progress);
    progress.Stop();
    if (!remark.empty()) {
        std::cerr << "nurvex: " << remark << '\n';
    }
    if (options.report) {
        series.GetReport().Print(std::cout);
    }
}

void RunCheck(const CheckOptions& options) {
    const GraphFile file(options.input);
    const GraphSize total = file.Check();
    std::cout << file.GetName() << ": no faults in " << many(total.nodes, "node") << ", of them "
              << many(total.clusters, "cluster") << ", and " << many(total.edges, "edge") << '\n';
}

} // namespace nurvex
