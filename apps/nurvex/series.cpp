#include "apps/nurvex/series.h"

#include "apps/nurvex/step_effect.h"

namespace nurvex {

namespace {

constexpr char NUMBER_MARK = '%';

/// The name of one picture, its number with as many digits as the highest has.
std::string numbered_name(const std::string& output, std::size_t number, std::size_t count) {
    const std::size_t digits = std::to_string(count - 1).size();
    const std::string text = std::to_string(number);
    std::string name = output;
    return name.replace(name.find(NUMBER_MARK), 1, std::string(digits - text.size(), '0') + text);
}

} // namespace

Series::Series(const std::string& output, std::size_t count)
    : numbered(output.find(NUMBER_MARK) != std::string::npos) {
    if (!numbered) {
        pictures.emplace_back(output);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        pictures.emplace_back(numbered_name(output, i, count));
    }
}

void Series::Spare(const std::string& input) const {
    for (const PictureFile& picture : pictures) {
        picture.Spare(input == "-" ? "/dev/stdin" : input);
    }
}

void Series::Rehearse(const GraphFile& file, const std::vector<Step>& steps) {
    if (steps.empty()) {
        return;
    }
    NumberedGraph graph(file.Load(), file.GetContent());
    for (const Step& step : steps) {
        ApplyStep(step, graph);
    }
}

// A series is followed twice, first for the page that holds all of its pictures and then to paint
// them. The same graph gives the same drawing to the last bit, and what has been painted once need
// not be kept for painting it again elsewhere on the page.
std::string Series::Draw(const GraphFile& file, const DrawOptions& options, Progress& progress) {
    const std::size_t last = options.steps.size();
    std::string remark;
    progress.SetStage("laying out");
    if (numbered) {
        QRectF page;
        follow(file, options,
               [&page](std::size_t, Drawing& drawing) { page |= drawing.GetPage(); });
        const StepReport first_report = *report;
        follow(file, options, [&](std::size_t number, Drawing& drawing) {
            progress.SetStage("drawing");
            drawing.SetPage(page);
            remark = write(number, drawing, file, options);
        });
        report = first_report;
    } else {
        follow(file, options, [&](std::size_t number, Drawing& drawing) {
            if (number == last) {
                progress.SetStage("drawing");
                drawing.DropLayout();
                remark = write(0, drawing, file, options);
            }
        });
    }
    for (PictureFile& picture : pictures) {
        picture.Place();
    }
    return remark;
}

void Series::follow(const GraphFile& file, const DrawOptions& options, const Visit& visit) {
    NumberedGraph graph(file.Load(), file.GetContent());
    Drawing drawing(graph.GetGraph(), options.spacing, options.dark ? Theme::DARK : Theme::LIGHT);
    report.emplace(drawing);
    visit(0, drawing);
    for (const Step& step : options.steps) {
        const Drawing::Passage passage = drawing.Follow(ApplyStep(step, graph));
        report->Add(step, passage, drawing, graph);
        visit(step.number, drawing);
    }
}

std::string Series::write(std::size_t number, const Drawing& drawing, const GraphFile& file,
                          const DrawOptions& options) {
    const std::size_t taken = numbered ? number : options.steps.size();
    std::string title = file.GetTitle();
    if (taken > 0) {
        title += ": " + options.steps[taken - 1].text;
    }
    return pictures[number].Write(drawing, options.scale, title);
}

} // namespace nurvex
