#include "tests/apps/nurvex_run.h"

#include <QDir>
#include <QMap>
#include <QRectF>
#include <QRegularExpression>

#include <cmath>
#include <string>

namespace {

/// Clusters side by side, and edges that cross their borders, one of them backwards.
constexpr const char* SHOP = R"(shop
[nodes]
1 "web" 0 0
2 "basket" 0 10
3 "orders" 0 10
4 "prices" 0 11
5 "stock" 0 11
6 "bank" 0 0
[clusters]
10 "sales" 0 20
11 "goods" 0 20
20 "services" 0 0
[edges]
1 2 ""
1 4 ""
2 3 ""
2 5 ""
4 5 ""
3 6 ""
5 1 ""
)";

/// Three nodes on one level, one after another.
constexpr const char* FAN = R"(fan
[nodes]
1 "start" 0 0
2 "upper" 0 0
3 "middle" 0 0
4 "lower" 0 0
[edges]
1 2 ""
1 3 ""
1 4 ""
)";

class StepsTest : public NurvexTest {
protected:
    /// Draws, and gives what --report says about each step, cell by cell.
    QList<QStringList> report_of(const QStringList& words) const {
        const Outcome outcome = run(QStringList{"draw"} + words + QStringList{"--report"});
        EXPECT_EQ(outcome.code, 0) << outcome.error.toStdString();
        QList<QStringList> rows;
        const QStringList lines = outcome.out.trimmed().split('\n');
        for (const QString& line : lines.mid(1)) {
            rows.push_back(line.split(QRegularExpression("  +")));
        }
        return rows;
    }

    /// The rectangle of each node in a picture, by caption.
    QMap<QString, QRectF> nodes_in(const QString& name) const {
        static const QRegularExpression node(
            "<rect x=\"([^\"]+)\" y=\"([^\"]+)\" width=\"([^\"]+)\" height=\"([^\"]+)\"[^>]*>\\s*"
            "(?:<g clip[^>]*>\\s*)?<g aria-label=\"([^\"]+)\"");
        QMap<QString, QRectF> nodes;
        auto found = node.globalMatch(QString::fromUtf8(read(name)));
        while (found.hasNext()) {
            const auto match = found.next();
            nodes[match.captured(5)] =
                QRectF(match.captured(1).toDouble(), match.captured(2).toDouble(),
                       match.captured(3).toDouble(), match.captured(4).toDouble());
        }
        return nodes;
    }

    QByteArray without_title(const QString& name) const {
        QByteArray svg = read(name);
        const auto start = svg.indexOf("<title>");
        return svg.remove(start, svg.indexOf("</title>") - start);
    }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
};

TEST_F(StepsTest, EachStepGivesAPictureOfTheSamePage) {
    write("shop.txt", SHOP);
    draw({"shop.txt", "--then", "add", "7", "mail", "then", "link", "3", "7", "--then", "remove",
          "1", "-o", "p%.svg"});
    EXPECT_EQ(files(), (QStringList{"p0.svg", "p1.svg", "p2.svg", "p3.svg", "shop.txt"}));
    static const QRegularExpression page("viewBox=\"[^\"]+\"");
    const QString first = page.match(QString::fromUtf8(read("p0.svg"))).captured();
    for (const char* name : {"p1.svg", "p2.svg", "p3.svg"}) {
        EXPECT_EQ(page.match(QString::fromUtf8(read(name))).captured(), first);
    }
    EXPECT_EQ(nodes_in("p1.svg").size(), nodes_in("p0.svg").size() + 1);
    EXPECT_FALSE(nodes_in("p3.svg").contains("web"));
}

TEST_F(StepsTest, PicturesAreNumberedWithAsManyDigitsAsTheLastNeeds) {
    write("shop.txt", SHOP);
    QStringList words{"shop.txt", "-o", "p%.svg", "--then", "hide", "6"};
    for (int i = 0; i < 9; ++i) {
        words << "then" << (i % 2 == 0 ? "show" : "hide") << "6";
    }
    draw(words);
    EXPECT_EQ(files().size(), 12);
    EXPECT_TRUE(files().contains("p00.svg") && files().contains("p10.svg"));
    draw({"shop.txt", "-o", "only%.svg"});
    EXPECT_TRUE(files().contains("only0.svg"));
}

TEST_F(StepsTest, WithoutANumberTheLastPictureIsDrawn) {
    write("shop.txt", SHOP);
    draw({"shop.txt", "--then", "remove", "20", "then", "resize", "6", "90x40", "-o", "p.svg"});
    EXPECT_EQ(files(), (QStringList{"p.svg", "shop.txt"}));
    const auto nodes = nodes_in("p.svg");
    EXPECT_EQ(nodes.keys(), (QStringList{"bank", "web"}));
    EXPECT_EQ(nodes["bank"].size(), QSizeF(90, 40));
}

TEST_F(StepsTest, OldNodesStandStillAndNewOnesHaveAnAccent) {
    write("shop.txt", SHOP);
    const auto rows = report_of({"shop.txt", "--then", "add", "7", "vouchers", "in", "10", "and",
                                 "link", "2", "7", "then", "link", "4", "3", "-o", "p%.svg"});
    ASSERT_EQ(rows.size(), 2);
    //        laid out, old, level, order, y, moved, by, new
    EXPECT_EQ(rows[0].mid(1, 4), (QStringList{"update 10", "9", "9", "9"}));
    EXPECT_EQ(rows[0][8], "1");
    EXPECT_EQ(rows[1].mid(1, 4), (QStringList{"update 20", "10", "10", "10"}));
    EXPECT_EQ(rows[1][8], "0");
    for (int i = 0; i < 2; ++i) {
        const auto before = nodes_in(QString("p%1.svg").arg(i));
        const auto after = nodes_in(QString("p%1.svg").arg(i + 1));
        int moved = 0;
        for (const QString& caption : before.keys()) {
            moved += std::abs(before[caption].y() - after[caption].y()) > 0.5 ? 1 : 0;
        }
        EXPECT_EQ(moved, rows[i][6].toInt()) << i;
    }
    const QByteArray accent = "fill=\"#fff1db\"";
    EXPECT_EQ(read("p0.svg").count(accent), 0);
    EXPECT_EQ(read("p1.svg").count(accent), 1);
    EXPECT_EQ(read("p2.svg").count(accent), 0);
    EXPECT_EQ(read("p2.svg").count("<path fill=\"none\" stroke=\"#c46816\""), 1);
}

TEST_F(StepsTest, AColumnStaysAsWideAsItWas) {
    write("fan.txt", FAN);
    draw({"fan.txt", "--then", "add",    "5",     "far",    "and",   "link", "2",
          "5",       "then",   "resize", "3",     "200x20", "then",  "hide", "3",
          "then",    "resize", "4",      "50x30", "-o",     "p%.svg"});
    const double before = nodes_in("p2.svg")["far"].x();
    EXPECT_GT(before, nodes_in("p1.svg")["far"].x() + 100);
    EXPECT_NEAR(nodes_in("p3.svg")["far"].x(), before, 0.01);
    EXPECT_NEAR(nodes_in("p4.svg")["far"].x(), before, 0.01);
}

TEST_F(StepsTest, TheReportTellsHowFarNodesMove) {
    write("fan.txt", FAN);
    const auto rows = report_of({"fan.txt", "--then", "resize", "2", "60x100", "-o", "p%.svg"});
    const auto before = nodes_in("p0.svg");
    const auto after = nodes_in("p1.svg");
    ASSERT_EQ(rows.size(), 1);
    // What stands below the node that has grown goes down by one amount.
    EXPECT_EQ(rows[0].mid(1, 4), (QStringList{"update root", "4", "4", "4"}));
    EXPECT_NEAR(rows[0][7].toDouble(), after["lower"].y() - before["lower"].y(), 1);
    EXPECT_NEAR(after["lower"].y() - before["lower"].y(),
                after["middle"].y() - before["middle"].y(), 1);
    EXPECT_NEAR(after["middle"].y() - after["upper"].bottom(), 14, 1) << "the gap of nodes";
    EXPECT_EQ(after["upper"].y(), before["upper"].y());
}

/// Bends of edges across borders would lose their places little by little.
TEST_F(StepsTest, StepsThatUndoEachOtherEndWhereTheyBegan) {
    write("shop.txt", SHOP);
    for (const char* id : {"2", "4", "11", "6"}) {
        QStringList words{"shop.txt", "-o", "p%.svg", "--then", "hide", id};
        for (int i = 0; i < 3; ++i) {
            words << "then"
                  << "show" << id << "then"
                  << "hide" << id;
        }
        draw(words);
        EXPECT_EQ(without_title("p3.svg"), without_title("p5.svg")) << id;
        EXPECT_EQ(without_title("p4.svg"), without_title("p6.svg")) << id;
    }
}

TEST_F(StepsTest, WhatCannotBeFittedInIsLaidOutAnew) {
    write("shop.txt", SHOP);
    const auto rows =
        report_of({"shop.txt", "--then", "add", "7",        "a",   "and",  "add",  "8", "b",
                   "and",      "link",   "6",   "7",        "and", "link", "7",    "8", "then",
                   "add",      "9",      "c",   "in",       "8",   "then", "fold", "2", "children",
                   "then",     "unfold", "2",   "children", "-o",  "p.svg"});
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0][1], "make root");
    EXPECT_EQ(rows[1][1], "make 8, update root") << "a leaf has become a cluster";
    EXPECT_EQ(rows[2][1], "update 10 11") << "children in two clusters";
    EXPECT_EQ(rows[3][1], "update 10 11");
    EXPECT_EQ(rows[3][8], "2");
}

class StepsRefused : public StepsTest, public testing::WithParamInterface<Refusal> {};

TEST_P(StepsRefused, WithTheStepAndAReason) {
    write("g.txt", SHOP);
    write("p0.svg", "older");
    QDir(folder.path()).mkdir("q1.svg");
    const QStringList before = files();
    const Outcome outcome = run(QStringList{"draw", "g.txt"} + GetParam().words);
    EXPECT_EQ(outcome.code, GetParam().code);
    EXPECT_TRUE(outcome.error.startsWith("nurvex: ")) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(GetParam().told)) << outcome.error.toStdString();
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(read("p0.svg"), "older");
}

/// The words behind --then, as they would be typed.
Refusal step(const char* name, const char* words, const char* told) {
    return {name, QStringList{"-o", "p%.svg", "--then"} + QString(words).split(' '), 2, told};
}

std::string name_of(const testing::TestParamInfo<Refusal>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Grammar, StepsRefused,
    testing::Values(
        Refusal{"nothing", {"-o", "p%.svg", "--then"}, 2, "step 1 (): it is empty"},
        Refusal{"two_marks", {"-o", "p%%.svg"}, 2, "one % in OUT is enough"},
        Refusal{"report_of_nothing", {"-o", "p.svg", "--report"}, 2, "--report tells about steps"},
        Refusal{"no_picture", {"-o", "q%.svg", "--then", "hide", "1"}, 1, "q1.svg: is a directory"},
        step("verb", "paint 1", "there is no \"paint\"; say fold, unfold"),
        Refusal{"one_word", {"-o", "p%.svg", "--then", "hide 1"}, 2, "each word by itself"},
        step("second_list_empty", "hide 1 then", "step 2 (): it is empty"),
        step("and_without_more", "hide 1 and", "behind \"and\" is missing"),
        step("and_first", "and hide 1", "it begins with \"and\""),
        step("id_too_low", "add 0 zero", "a number from 1 on"),
        step("id_missing", "hide and hide 2", "behind \"hide\" is missing the id"),
        step("id_no_number", "hide web", "\"web\" is no id"),
        step("id_with_tail", "hide 1x", "\"1x\" is no id"),
        step("id_too_large", "hide 3000000000", "is no id"),
        step("direction", "fold 2 childs", "say parents or children, not \"childs\""),
        step("direction_missing", "fold 2", "behind \"2\" is missing parents or children"),
        step("too_much", "fold 2 children hide 3", "\"hide\" is one word too many"),
        step("owner_missing", "add 7 in", "behind \"in\" is missing the id of the owner"),
        step("size", "resize 1 40", "\"40\" is no size"),
        step("size_of_nothing", "resize 1 0x40", "\"0x40\" is no size"),
        step("size_endless", "resize 1 infx40", "is no size")),
    name_of);

INSTANTIATE_TEST_SUITE_P(
    Graph, StepsRefused,
    testing::Values(
        step("unknown", "hide 77", "step 1 (hide 77): there is no node 77"),
        step("second_step", "hide 1 then hide 77", "step 2 (hide 77): there is no node 77"),
        step("root", "link 1 0", "there is no node 0"),
        step("removed", "remove 2 then hide 2", "step 2 (hide 2): there is no node 2"),
        step("removed_child", "remove 6 then fold 3 children", "node 3 has no children"),
        step("removed_inside", "remove 20 and link 1 4", "there is no node 4"),
        step("not_added_yet", "link 1 7 and add 7", "there is no node 7"),
        step("taken", "add 1", "the id 1 is taken"),
        step("owner_unknown", "add 7 x in 77", "there is no node 77"),
        step("hidden", "hide 1 then hide 1", "node 1 is hidden already"),
        step("shown", "show 1", "node 1 is shown already"),
        step("nothing_to_fold", "fold 6 children", "node 6 has no children that are shown"),
        step("folded", "fold 2 parents and fold 2 parents", "no parents that are shown"),
        step("nothing_to_unfold", "unfold 2 children", "no children that are hidden"),
        step("no_edge", "remove 2 1", "no edge leads from node 2 to node 1"),
        step("size_of_cluster", "resize 10 40x40", "node 10 is a cluster")),
    name_of);

} // namespace
