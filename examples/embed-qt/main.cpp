#include <QApplication>
#include <QTimer>

#include <hosts/qt/element_widget.h>
#include <nurvex7/nurvex7.h>

using namespace nurvex7;

static graph_ptr2<Graph> make_graph() {
    const graph_ptr2<Graph> graph(new Graph, /*owns=*/true);
    Node write = graph->GetRoot().AddNode();
    Node compile = graph->GetRoot().AddNode();
    Node run = graph->GetRoot().AddNode();
    write.SetCaption("write");
    compile.SetCaption("compile");
    run.SetCaption("run");
    write.LinkTo(compile);
    compile.LinkTo(run);
    run.LinkTo(write);
    return graph;
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);

    // The embedding: a widget, a handler that measures with the widget's painter, and the viewer.
    qt::ElementWidget widget;
    const graph_ptr2<PortNodeHandler> handler(new PortNodeHandler, /*owns=*/true);
    handler->drawer.SetIPainter(widget.GetPainter());
    const graph_ptr2<Graph> graph = make_graph();
    graph->SetDefaultLayout(IncLayout::Create());
    auto* const viewer = new CGraphViewer(widget.GetRoot(), graph_ptr2<Graph>(), true);
    viewer->SetDefaultNodeHandler(handler);
    viewer->SetGraph(graph);
    widget.show();

    if (application.arguments().contains("--once")) { // for a look without a user
        QTimer::singleShot(200, &application, [&] {
            application.exit(viewer->GetScale() == 1.0 && !widget.GetPicture().isNull() ? 0 : 1);
        });
    }
    return application.exec();
}
