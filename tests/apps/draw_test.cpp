#include "tests/apps/nurvex_run.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QSvgRenderer>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char* SAMPLE = R"(sample
[nodes]
1 "outer" 0 0
2 "inner" 0 1
3 "first" 0 2
4 "second" 0 2
5 "beside & <below>" 0 1
6 "last" 0 0
[edges]
3 4 ""
3 5 ""
4 6 ""
6 3 ""
)";

class DrawTest : public NurvexTest {
protected:
    QImage render_svg(const QString& name, QSize size) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        QSvgRenderer renderer(in_folder(name));
        EXPECT_TRUE(renderer.isValid());
        renderer.render(&painter);
        return image;
    }
};

/// How much of two pictures differs at a glance: both are looked at through a grid of cells of a
/// few pixels, since glyphs and slanted lines are rendered differently.
double difference(const QImage& a, const QImage& b) {
    const QSize coarse = a.size() / 4;
    const QImage x = a.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage y = b.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int different = 0;
    for (int row = 0; row < coarse.height(); ++row) {
        for (int column = 0; column < coarse.width(); ++column) {
            const int gap = qGray(x.pixel(column, row)) - qGray(y.pixel(column, row));
            different += std::abs(gap) > 40 ? 1 : 0;
        }
    }
    return static_cast<double>(different) / (coarse.width() * coarse.height());
}

TEST_F(DrawTest, OneGraphLooksTheSameInAllFormats) {
    write("g.txt", SAMPLE);
    draw({"g.txt", "-o", "g.svg"});
    draw({"g.txt", "-o", "g.png"});
    draw({"g.txt", "-o", "g.PDF"});
    const QImage png(in_folder("g.png"));
    ASSERT_FALSE(png.isNull());
    EXPECT_LT(difference(png, render_svg("g.svg", png.size())), 0.005);
    EXPECT_TRUE(read("g.PDF").startsWith("%PDF"));
    const QString converter = QStandardPaths::findExecutable("pdftoppm");
    if (!converter.isEmpty()) {
        QProcess::execute(
            converter, {"-png", "-r", "192", "-singlefile", in_folder("g.PDF"), in_folder("page")});
        const QImage page(in_folder("page.png"));
        ASSERT_NEAR(page.width(), png.width(), 4);
        ASSERT_NEAR(page.height(), png.height(), 4);
        EXPECT_LT(difference(png, page.copy(png.rect())), 0.01);
    }
}

TEST_F(DrawTest, ScaleMagnifiesThePictureAsAWhole) {
    write("g.txt", SAMPLE);
    draw({"g.txt", "-o", "one.png", "--scale", "1"});
    draw({"g.txt", "-o", "two.png"});
    draw({"g.txt", "-o", "three.png", "--scale=3"});
    draw({"g.txt", "-o", "three.svg", "--scale=3"});
    const QImage one(in_folder("one.png"));
    const QImage three(in_folder("three.png"));
    EXPECT_EQ(QImage(in_folder("two.png")).size(), one.size() * 2);
    EXPECT_EQ(three.size(), one.size() * 3);
    EXPECT_EQ(QSvgRenderer(in_folder("three.svg")).defaultSize(), one.size() * 3);
    EXPECT_LT(difference(three, one.scaled(three.size())), 0.01);
}

TEST_F(NurvexTest, ReadsStandardInput) {
    write("g.txt", SAMPLE);
    draw({"g.txt", "-o", "file.svg"});
    draw({"-", "-o", "input.svg"}, SAMPLE);
    QByteArray from_file = read("file.svg");
    QByteArray from_input = read("input.svg");
    EXPECT_EQ(from_file.replace("<title>g<", "<title><"),
              from_input.replace("<title>standard input<", "<title><"));
}

TEST_F(NurvexTest, CaptionsAreEscapedAndCanBeSearched) {
    write("g.txt", SAMPLE);
    draw({"g.txt", "-o", "g.svg"});
    const QByteArray svg = read("g.svg");
    EXPECT_TRUE(svg.contains("aria-label=\"beside &amp; &lt;below&gt;\""));
    EXPECT_FALSE(svg.contains("<text"));
}

TEST_F(NurvexTest, HiddenNodesOfAThreadViewAreNotDrawn) {
    draw({"-", "-o", "g.svg"}, R"(threads
[nodes]
1 "Thread 1" 0 0
2 "start" 0 0
3 "elsewhere" 0 0
[edges]
1 2 ""
2 3 ""
)");
    const QByteArray svg = read("g.svg");
    EXPECT_TRUE(svg.contains("Thread 1"));
    EXPECT_TRUE(svg.contains("start"));
    EXPECT_FALSE(svg.contains("elsewhere"));
    EXPECT_EQ(svg.count("<path fill=\"none\""), 1);
}

TEST_F(NurvexTest, SpacingAndThemeChangeThePicture) {
    write("g.txt", SAMPLE);
    draw({"g.txt", "-o", "g.png"});
    draw({"g.txt", "-o", "wide.png", "--level-gap", "80", "--node-gap=30", "--edge-gap", "6",
          "--edge-margin", "9.5"});
    draw({"g.txt", "-o", "dark.png", "--dark"});
    const QImage plain(in_folder("g.png"));
    const QImage wide(in_folder("wide.png"));
    const QImage dark(in_folder("dark.png"));
    EXPECT_GT(wide.width(), plain.width());
    EXPECT_GT(wide.height(), plain.height());
    EXPECT_EQ(dark.size(), plain.size());
    EXPECT_GT(qGray(plain.pixel(2, 2)), 220);
    EXPECT_LT(qGray(dark.pixel(2, 2)), 60);
}

QByteArray chain(int nodes) {
    QByteArray text = "chain\n[nodes]\n";
    for (int i = 1; i <= nodes; ++i) {
        text += QByteArray::number(i) + " \"a node of the chain\" 0 0\n";
    }
    text += "[edges]\n";
    for (int i = 1; i < nodes; ++i) {
        text += QByteArray::number(i) + ' ' + QByteArray::number(i + 1) + " \"\"\n";
    }
    return text;
}

TEST_F(NurvexTest, APictureTooLargeForItsFormatIsFittedOrRefused) {
    write("long.txt", chain(200));
    const Outcome fitted = run({"draw", "long.txt", "-o", "fitted.png"});
    EXPECT_EQ(fitted.code, 0);
    EXPECT_TRUE(fitted.error.contains("drawn at scale"));
    EXPECT_LE(QImage(in_folder("fitted.png")).width(), 32767);

    const Outcome refused = run({"draw", "long.txt", "-o", "refused.png", "--scale", "5"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_FALSE(QFile::exists(in_folder("refused.png")));
    const auto hint = QRegularExpression("--scale ([0-9.]+) or less").match(refused.error);
    ASSERT_TRUE(hint.hasMatch()) << refused.error.toStdString();
    draw({"long.txt", "-o", "hinted.png", "--scale", hint.captured(1)});

    const Outcome page = run({"draw", "long.txt", "-o", "page.pdf"});
    EXPECT_EQ(page.code, 0);
    EXPECT_TRUE(page.error.contains("drawn at scale"));
    const QString pdf = QString::fromLatin1(read("page.pdf"));
    const auto box = QRegularExpression(R"(/MediaBox \[0 0 ([0-9.]+) ([0-9.]+)\])").match(pdf);
    ASSERT_TRUE(box.hasMatch());
    EXPECT_LE(box.captured(1).toDouble(), 14400);
}

TEST_F(NurvexTest, AFailureLeavesWhatWasThere) {
    write("bad.txt", "bad\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 2 \"\"\n");
    write("old.svg", "the older picture");
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
    const Outcome outcome = run({"draw", "bad.txt", "-o", "old.svg"});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(outcome.error.startsWith("bad.txt:5: ")) << outcome.error.toStdString();
    EXPECT_EQ(read("old.svg"), "the older picture");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

// A file that may not grow is like a full disk: what still fits is written.
TEST_F(NurvexTest, AFullDiskLeavesWhatWasThere) {
    QByteArray graph = "many captions\n[nodes]\n";
    for (int i = 1; i < 700; ++i) {
        graph += QByteArray::number(i) + " \"" + QByteArray::number(i * i) + "\" 0 0\n";
    }
    write("many.txt", graph);
    for (const QString name : {"old.svg", "old.png", "old.pdf"}) {
        SCOPED_TRACE(name.toStdString());
        draw({"many.txt", "-o", name, "--scale", "0.5"});
        const QByteArray older = read(name);
        const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
        const auto limit = static_cast<rlim_t>(older.size() / 2);
        const Outcome outcome =
            run({"draw", "many.txt", "-o", name, "--dark", "--scale", "0.5"}, {}, [limit] {
                const struct rlimit most = {limit, limit};
                setrlimit(RLIMIT_FSIZE, &most);
                std::signal(SIGXFSZ, SIG_IGN);
            });
        EXPECT_EQ(outcome.code, 1);
        EXPECT_TRUE(outcome.error.contains(name + ": cannot be written: File too large"))
            << outcome.error.toStdString();
        EXPECT_EQ(read(name), older);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
    }
}

TEST_F(NurvexTest, WhatCannotBeReadIsNoEndOfTheFile) {
    write("old.svg", "the older picture");
    const struct {
        const char* shows;
        const char* file;
        std::function<void()> arrange;
        const char* told;
        int code;
    } cases[] = {
        {"a directory", "-",
         [] {
             close(0);
             open("/", O_RDONLY);
         },
         "standard input: cannot be read: Is a directory; ", 1},
        {"a closed input", "-", [] { close(0); },
         "standard input: cannot be read: Bad file descriptor; ", 1},
        {"a read error", "/proc/self/mem", {}, "/proc/self/mem: cannot be read: Input/output ", 1},
        {"a connection that breaks", "-",
         [] {
             int ends[2];
             EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
             EXPECT_EQ(::write(ends[1], "t\n[nodes]\n1 \"a\" 0 0", 19), 19);
             EXPECT_EQ(::write(ends[0], "?", 1), 1); // the other end goes without reading it
             close(ends[1]);
             dup2(ends[0], 0);
         },
         "standard input: cannot be read: Connection reset by peer; 19 bytes of it came, the ", 1},
        {"zeroes without an end", "/dev/zero", {}, "/dev/zero:1: a NUL byte: ", 2},
        {"an empty input", "-", {}, "standard input:1: the file is empty; put ", 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        for (const QStringList& words :
             {QStringList{"check", c.file}, {"draw", c.file, "-o", "old.svg"}}) {
            const Outcome outcome = run(words, {}, c.arrange);
            EXPECT_EQ(outcome.code, c.code);
            EXPECT_TRUE(outcome.error.contains(c.told)) << outcome.error.toStdString();
            EXPECT_EQ(outcome.out, "");
        }
    }
    EXPECT_EQ(read("old.svg"), "the older picture");
}

TEST_F(NurvexTest, CheckTellsFaultsByLineOrTheSizeOfTheGraph) {
    write("good.txt", SAMPLE);
    const Outcome good = run({"check", "good.txt"});
    EXPECT_EQ(good.code, 0);
    EXPECT_EQ(good.out, "good.txt: no faults in 6 nodes, of them 2 clusters, and 4 edges\n");
    EXPECT_EQ(good.error, "");

    const QByteArray bad = "bad\n[nodes]\n1 \"a\" 0 7\n[edges]\n1 2 \"\"\n";
    const Outcome faulty = run({"check", "-"}, bad);
    EXPECT_EQ(faulty.code, 2);
    EXPECT_TRUE(faulty.error.contains("standard input:3: ")) << faulty.error.toStdString();
    EXPECT_TRUE(faulty.error.contains("standard input:5: "));
    EXPECT_EQ(faulty.out, "");
}

TEST_F(NurvexTest, WithoutADisplayAPictureIsAdvised) {
    for (const auto& [name, value] :
         {std::pair("", ""), {"DISPLAY", ":77"}, {"QT_QPA_PLATFORM", "bogus"}}) {
        variables.clear();
        variables.insert(name, value);
        const Outcome outcome = run({"view", "g.txt"});
        EXPECT_EQ(outcome.code, 1);
        EXPECT_TRUE(outcome.error.startsWith("nurvex: ") && outcome.error.contains(value) &&
                    outcome.error.endsWith("draw a picture instead: nurvex draw FILE -o OUT\n"))
            << outcome.error.toStdString();
        EXPECT_EQ(outcome.error.count('\n'), 1) << outcome.error.toStdString();
    }
}

TEST_F(NurvexTest, OutputThatIsLostIsAFailure) {
    write("g.txt", SAMPLE);
    for (const QStringList& words :
         {QStringList{"--help"},
          {"check", "g.txt"},
          {"draw", "g.txt", "--then", "hide", "6", "-o", "g.svg", "--report"}}) {
        const Outcome outcome = run(words, {}, [] { dup2(open("/dev/full", O_WRONLY), 1); });
        EXPECT_EQ(outcome.code, 1) << words.join(' ').toStdString();
        EXPECT_TRUE(outcome.error.startsWith("nurvex: standard output: cannot be written: No "))
            << outcome.error.toStdString();
    }
}

class NurvexRefuses : public NurvexTest, public testing::WithParamInterface<Refusal> {};

TEST_P(NurvexRefuses, WithAReason) {
    write("g.txt", SAMPLE);
    write("graph.svg", SAMPLE);
    QFile::link("none/picture.svg", in_folder("link.svg"));
    QDir(folder.path()).mkdir("folder");
    QDir(folder.path()).mkdir("folder.svg");
    const Outcome outcome = run(GetParam().words);
    EXPECT_EQ(outcome.code, GetParam().code);
    EXPECT_TRUE(outcome.error.startsWith("nurvex: ")) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(GetParam().told)) << outcome.error.toStdString();
    EXPECT_EQ(outcome.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Words, NurvexRefuses,
    testing::Values(
        Refusal{"nothing", {}, 2, "Usage:"},
        Refusal{"unknown_command", {"paint", "g.txt"}, 2, "unknown command \"paint\""},
        Refusal{"no_file", {"draw", "-o", "g.svg"}, 2, "needs a FILE"},
        Refusal{"no_out", {"draw", "g.txt"}, 2, "needs -o OUT"},
        Refusal{"out_without_name", {"draw", "g.txt", "-o"}, 2, "-o needs a value"},
        Refusal{"two_files", {"draw", "g.txt", "g.txt", "-o", "g.svg"}, 2, "one FILE at a time"},
        Refusal{"unknown_option", {"draw", "g.txt", "-o", "g.svg", "--fast"}, 2, "--fast"},
        Refusal{"gap_no_number", {"draw", "g.txt", "-o", "g.svg", "--node-gap", "x"}, 2, "\"x\""},
        Refusal{"gap_negative", {"draw", "g.txt", "-o", "g.svg", "--edge-gap=-1"}, 2, "\"-1\""},
        Refusal{"gap_endless", {"draw", "g.txt", "-o", "g.svg", "--level-gap=inf"}, 2, "\"inf\""},
        Refusal{"gap_with_unit", {"draw", "g.txt", "-o", "g.svg", "--edge-margin=5px"}, 2, "5px"},
        Refusal{
            "scale_zero", {"draw", "g.txt", "-o", "g.svg", "--scale", "0"}, 2, "0.0001 to 1000"},
        Refusal{"scale_of_a_point", {"draw", "g.txt", "-o", "g.svg", "--scale=1e-9"}, 2, "1e-9"},
        Refusal{"gap_beyond_all", {"draw", "g.txt", "-o", "g.svg", "--level-gap=1e9"}, 2, "1000"},
        Refusal{"flag_with_value", {"draw", "g.txt", "-o", "g.svg", "--dark=1"}, 2, "no value"},
        Refusal{"check_no_file", {"check"}, 2, "needs a FILE"}),
    [](const auto& refusal) { return std::string(refusal.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Files, NurvexRefuses,
    testing::Values(
        Refusal{"unknown_suffix", {"draw", "g.txt", "-o", "g.gif"}, 2, ".svg, .png or .pdf"},
        Refusal{"no_suffix", {"draw", "g.txt", "-o", "svg"}, 2, ".svg, .png or .pdf"},
        Refusal{"missing_input", {"draw", "none.txt", "-o", "g.svg"}, 1, "none.txt: cannot be"},
        Refusal{"missing_input_of_check", {"check", "none.txt"}, 1, "none.txt: cannot be read"},
        Refusal{"folder_as_input", {"draw", "folder", "-o", "g.svg"}, 1, "is a directory"},
        Refusal{"folder_as_out", {"draw", "g.txt", "-o", "folder.svg"}, 1, "is a directory"},
        Refusal{"input_as_out", {"draw", "graph.svg", "-o", "graph.svg"}, 1, "is the graph itself"},
        Refusal{"link_to_no_folder", {"draw", "-", "-o", "link.svg"}, 1, "does not exist"},
        Refusal{"no_such_folder", {"draw", "g.txt", "-o", "none/g.svg"}, 1, "does not exist"},
        Refusal{"folder_without_room", {"draw", "g.txt", "-o", "/proc/g.svg"}, 1, "/proc/g.svg"}),
    [](const auto& refusal) { return std::string(refusal.param.name); });

TEST_F(NurvexTest, EveryCommandExplainsItself) {
    for (const QStringList& words : {QStringList{"--help"},
                                     {"draw", "--help"},
                                     {"draw", "g.txt", "-h"},
                                     {"check", "--help"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.code, 0);
        EXPECT_TRUE(outcome.out.contains("Usage:"));
        EXPECT_EQ(outcome.error.toStdString(), "");
    }
    EXPECT_TRUE(run({"--version"}).out.startsWith("nurvex "));
}

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
