// What is shown of a graph, and told of it.
#include "nurvex7/presentation/simple_node_handler.h"
#include "tests/apps/view_window_fixture.h"

#include <new>
#include <sys/resource.h>
#include <sys/stat.h>
#include <utility>

namespace nurvex {
namespace {

TEST_F(ViewWindowTest, OnlyTheStartsAreDrawnAlikeBeforeAndAfterUndo) {
    const auto places = [this] {
        std::string text;
        for (int i = 3; i < 40; i += 2) {
            const Node n = node("n" + std::to_string(i));
            const auto at = n.GetPosition();
            text += IsFlagSet(n, NODE_DRAWN)
                        ? std::to_string(at.y - node("n3").GetPosition().y) +
                              (view().rect().contains(corner_of(n)) ? " " : "! ")
                        : "- ";
        }
        return text;
    };
    QByteArray text("many\n[nodes]\n1 \"C\" 0 0\n2 \"behind\" 0 1\n");
    QByteArray edges("[edges]\n");
    for (int i = 3; i < 40; ++i) {
        const QByteArray id = QByteArray::number(i);
        text += id + " \"n" + id + "\" 0 0\n";
        edges +=
            i % 4 == 0 ? "" : QByteArray::number(i) + " " + QByteArray::number(i + 1) + " \"\"\n";
    }
    write("many.txt", text + "40 \"n40\" 0 0\n" + edges + "3 2 \"\"\n");
    ASSERT_TRUE(window.Open(file("many.txt")));
    act("show_starts");
    const std::string once = places();
    act("undo");
    act("redo");
    EXPECT_FALSE(IsFlagSet(node("C"), NODE_DRAWN)) << "no empty boxes";
    EXPECT_EQ(places(), once);
    click(right_port_of(node("n3")));
    EXPECT_TRUE(IsFlagSet(node("behind"), NODE_DRAWN)) << "with the cluster around it";
}

/// Runs out of memory once.
class GreedyHandler final : public SimpleNodeHandler {
public:
    using SimpleNodeHandler::GetSize;
    tamsel7::size<double> GetSize(Node node) override {
        if (!std::exchange(done, true)) {
            throw std::bad_alloc();
        }
        return SimpleNodeHandler::GetSize(node);
    }

private:
    bool done = false;
};

TEST_F(ViewWindowTest, WithoutMemoryTheDistancesStayAndTheViewLives) {
    Node mail = node("mail");
    const auto gap = [this] {
        return node("shop").GetPosition().x - node("browser").GetPosition().x;
    };
    const double before = gap();
    const auto usual = mail.GetHandler();
    mail.SetHandler(graph_ptr2<INodeHandler>(new GreedyHandler, /*owns=*/true));
    Spacing wide;
    wide.level_gap += 40;
    const QString text = told([&] { window.SetSpacing(wide); });
    EXPECT_TRUE(text.contains("shop.txt: there is not enough memory")) << text.toStdString();
    mail.SetHandler(usual);
    EXPECT_EQ(gap(), before);
    const QPoint stands = corner_of(mail);
    drag(view(), {5, 5}, {65, 45});
    EXPECT_EQ(corner_of(mail) - stands, QPoint(60, 40));
    window.SetSpacing(wide);
    EXPECT_DOUBLE_EQ(gap(), before + 40);
}

TEST_F(ViewWindowTest, DoesNotWaitForAPipe) {
    ASSERT_EQ(mkfifo(qPrintable(file("pipe.txt")), 0600), 0);
    const QString text = told([&] { EXPECT_FALSE(window.Open(file("pipe.txt"))); });
    EXPECT_TRUE(text.contains("pipe.txt: is a pipe or a device")) << text.toStdString();
    EXPECT_EQ(window.GetPath(), file("shop.txt"));
}

#ifndef __SANITIZE_ADDRESS__
TEST_F(ViewWindowTest, AFileLargerThanTheMemoryIsNamed) {
    constexpr qint64 HALF_A_GIGABYTE = 1 << 29;
    QFile large(file("large.txt"));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(HALF_A_GIGABYTE));
    QFile pages(QStringLiteral("/proc/self/statm"));
    ASSERT_TRUE(pages.open(QIODevice::ReadOnly));
    struct rlimit usual = {};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &usual), 0);
    struct rlimit tight = usual;
    tight.rlim_cur =
        pages.readAll().split(' ').front().toULongLong() * 4096 + HALF_A_GIGABYTE * 3 / 4;
    setrlimit(RLIMIT_AS, &tight);
    const QString text = told([&] { EXPECT_FALSE(window.Open(large.fileName())); });
    setrlimit(RLIMIT_AS, &usual);
    EXPECT_TRUE(text.contains("large.txt: there is not enough memory")) << text.toStdString();
    EXPECT_EQ(window.GetPath(), file("shop.txt"));
}
#endif

TEST_F(ViewWindowTest, TooltipsStayOnTheScreenAndOutOfEmptyDrawings) {
    write("long.txt", "long\n[nodes]\n1 \"" + QByteArray("long ").repeated(400) +
                          "\" 0 0\n2 \"b\" 0 0\n[edges]\n1 2 \"\"\n");
    ASSERT_TRUE(window.Open(file("long.txt")));
    settle();
    const Node start = node("b").GetParents().GetItem(0);
    const QStringList lines = tip_at(middle_of(start)).split('\n');
    EXPECT_EQ(lines.size(), 8);
    EXPECT_TRUE(std::all_of(lines.begin(), lines.end(), [](auto& l) { return l.size() <= 80; }));
    EXPECT_EQ(lines.last(), "1 child");

    ViewWindow empty;
    const Node root = empty.GetView().GetGraph()->GetRoot();
    CGraphTooltipEvent event;
    EXPECT_EQ(root.GetHandler()->HandleOnTooltip(root, &event), HANDLED_NOTHING);
    // Neither does a press in its overview move anything.
    const QRectF stands = empty.GetView().GetVisibleArea();
    drag(empty.GetOverview(), {20, 20}, {30, 30});
    EXPECT_EQ(empty.GetView().GetVisibleArea(), stands);
}

} // namespace
} // namespace nurvex
