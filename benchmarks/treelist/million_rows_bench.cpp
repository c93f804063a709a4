// A million rows in three levels in the tree list, in QTreeWidget and in QTreeView over QStandardItemModel, side by
// side in one run. Every measurement has a process of its own, so that none inherits the memory of another; the three
// take turns, and the best of each counts. Prints seconds, bytes a row, and what the others take as a multiple.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <memory>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QHeaderView>
#include <QPixmap>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>
#include <QTreeWidget>

#include "ui/treelist/tree_list_ctrl.h"

namespace {

using namespace fenmark::ui::treelist;
using Clock = std::chrono::steady_clock;

constexpr int kTop = 100;                                         // rows of the first level, and children of each
constexpr int kLeaves = 99;                                       // children of each row of the second level
constexpr int kRows = kTop + kTop * kTop + kTop * kTop * kLeaves; // 1,000,100
constexpr int kPaints = 60;
const QSize kWindow(800, 600);

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

struct Figures {
    double build = 0;    // s, rows inserted
    double expand = 0;   // s, all rows expanded and laid out
    double bytesRow = 0; // bytes a row on the heap
    double paint = 0;    // s, one picture of the window, at places all over the list
    double cascade = 0;  // s, a check on the root carried through all rows; the tree list alone
    double position = 0; // s, one row from its position and back; the tree list alone
    double flat = 0;     // s, the same with a million siblings
};

// Pictures at places all over the list, jumping.
double paintAll(QWidget& window, QScrollBar& bar) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(0, bar.maximum());
    QPixmap picture(kWindow);
    window.render(&picture);
    const auto start = Clock::now();
    for (int i = 0; i < kPaints; ++i) {
        bar.setValue(place(random));
        window.render(&picture);
    }
    return secondsSince(start) / kPaints;
}

// Position to row and row to position, for one pair of questions.
double askPositions(const CTreeListCtrl& list) {
    constexpr int kAsked = 200000;
    std::mt19937 random(11);
    std::uniform_int_distribution<int> index(0, list.GetVisibleCount() - 1);
    long wrong = 0;
    const auto start = Clock::now();
    for (int i = 0; i < kAsked; ++i) {
        const int asked = index(random);
        wrong += list.GetItemIndex(list.GetItemAtIndex(asked)) == asked ? 0 : 1;
    }
    const double each = secondsSince(start) / kAsked;
    if (wrong != 0) {
        std::fprintf(stderr, "%ld positions are wrong\n", wrong);
        std::exit(1);
    }
    return each;
}

Figures measureTreeList() {
    Figures figures;
    auto list = std::make_unique<CTreeListCtrl>();
    list->Create(0xf0001, QRect(QPoint(0, 0), kWindow), nullptr);
    list->InsertColumn("Name", kColumnInitialFormat, 400);
    list->show();
    QApplication::processEvents();
    const double before = heapBytes();
    auto start = Clock::now();
    CTreeListItem* all = nullptr;
    for (int i = 0; i < kTop; ++i) {
        CTreeListItem* top = list->InsertItem(QStringLiteral("row %1").arg(i));
        all = all ? all : top;
        for (int j = 0; j < kTop; ++j) {
            CTreeListItem* middle = list->InsertItem(QStringLiteral("row %1").arg(j), top);
            for (int k = 0; k < kLeaves; ++k) {
                list->InsertItem(QStringLiteral("row %1").arg(k), middle);
            }
        }
    }
    QApplication::processEvents();
    figures.build = secondsSince(start);
    start = Clock::now();
    for (CTreeListItem* top = all; top; top = top->nextSibling()) {
        list->Expand(top, ExpandCode::Expand);
        for (CTreeListItem* middle = top->firstChild(); middle; middle = middle->nextSibling()) {
            list->Expand(middle, ExpandCode::Expand);
        }
    }
    QApplication::processEvents();
    figures.expand = secondsSince(start);
    figures.bytesRow = (heapBytes() - before) / list->GetItemCount();
    figures.paint = paintAll(*list, *list->verticalScrollBar());
    start = Clock::now();
    list->SetCheck(list->GetRootItem(), 1);
    figures.cascade = secondsSince(start);
    figures.position = askPositions(*list);
    list->DeleteAllItems();
    for (int i = 0; i < kRows; ++i) {
        list->InsertItem(QStringLiteral("row %1").arg(i));
    }
    figures.flat = askPositions(*list);
    static_cast<void>(list.release());
    return figures;
}

Figures measureTreeWidget() {
    Figures figures;
    auto tree = std::make_unique<QTreeWidget>();
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true); // as all rows of the tree list have one height
    tree->resize(kWindow);
    tree->show();
    QApplication::processEvents();
    const double before = heapBytes();
    auto start = Clock::now();
    for (int i = 0; i < kTop; ++i) {
        auto* top = new QTreeWidgetItem(tree.get());
        top->setText(0, QStringLiteral("row %1").arg(i));
        top->setCheckState(0, Qt::Unchecked);
        for (int j = 0; j < kTop; ++j) {
            auto* middle = new QTreeWidgetItem(top);
            middle->setText(0, QStringLiteral("row %1").arg(j));
            middle->setCheckState(0, Qt::Unchecked);
            for (int k = 0; k < kLeaves; ++k) {
                auto* leaf = new QTreeWidgetItem(middle);
                leaf->setText(0, QStringLiteral("row %1").arg(k));
                leaf->setCheckState(0, Qt::Unchecked);
            }
        }
    }
    QApplication::processEvents();
    figures.build = secondsSince(start);
    start = Clock::now();
    tree->expandAll();
    QApplication::processEvents();
    figures.expand = secondsSince(start);
    figures.bytesRow = (heapBytes() - before) / kRows;
    figures.paint = paintAll(*tree, *tree->verticalScrollBar());
    static_cast<void>(tree.release()); // the process ends without taking the tree apart
    return figures;
}

Figures measureStandardModel() {
    Figures figures;
    auto view = std::make_unique<QTreeView>();
    view->setHeaderHidden(true);
    view->setUniformRowHeights(true);
    view->resize(kWindow);
    view->show();
    QApplication::processEvents();
    const double before = heapBytes();
    auto start = Clock::now();
    auto* model = new QStandardItemModel(view.get());
    view->setModel(model);
    const auto row = [](int number) {
        auto* item = new QStandardItem(QStringLiteral("row %1").arg(number));
        item->setCheckable(true);
        return item;
    };
    for (int i = 0; i < kTop; ++i) {
        QStandardItem* top = row(i);
        for (int j = 0; j < kTop; ++j) {
            QStandardItem* middle = row(j);
            for (int k = 0; k < kLeaves; ++k) {
                middle->appendRow(row(k));
            }
            top->appendRow(middle);
        }
        model->appendRow(top);
    }
    QApplication::processEvents();
    figures.build = secondsSince(start);
    start = Clock::now();
    view->expandAll();
    QApplication::processEvents();
    figures.expand = secondsSince(start);
    figures.bytesRow = (heapBytes() - before) / kRows;
    figures.paint = paintAll(*view, *view->verticalScrollBar());
    static_cast<void>(view.release());
    return figures;
}

// Runs a measurement in a process of its own.
Figures run(const std::function<Figures()>& measure) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::perror("pipe");
        std::exit(1);
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        int argc = 1;
        char name[] = "bench_treelist";
        char* argv[] = {name, nullptr};
        QApplication app(argc, argv);
        const Figures figures = measure();
        const bool sent = write(ends[1], &figures, sizeof figures) == static_cast<ssize_t>(sizeof figures);
        std::_Exit(sent ? 0 : 1); // without taking the trees apart
    }
    close(ends[1]);
    Figures figures;
    const ssize_t got = read(ends[0], &figures, sizeof figures);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0 || got != static_cast<ssize_t>(sizeof figures)) {
        std::fprintf(stderr, "a measurement failed\n");
        std::exit(1);
    }
    return figures;
}

void keepBest(Figures& best, const Figures& other) {
    const auto least = [](double& kept, double now) { kept = kept == 0 ? now : std::min(kept, now); };
    least(best.build, other.build);
    least(best.expand, other.expand);
    least(best.bytesRow, other.bytesRow);
    least(best.paint, other.paint);
    least(best.cascade, other.cascade);
    least(best.position, other.position);
    least(best.flat, other.flat);
}

void line(const char* what, double scale, const char* unit, double list, double widget, double model) {
    std::printf("%-28s %10.3f %10.3f %10.3f %-4s %8.2fx %8.2fx\n", what, list * scale, widget * scale, model * scale,
                unit, widget / list, model / list);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
    Figures list;
    Figures widget;
    Figures model;
    for (int round = 0; round < rounds; ++round) {
        keepBest(list, run(measureTreeList));
        keepBest(widget, run(measureTreeWidget));
        keepBest(model, run(measureStandardModel));
    }
    std::printf("%d rows in three levels, best of %d\n", kRows, rounds);
    std::printf("%-28s %10s %10s %10s\n", "", "tree list", "TreeWidget", "StdModel");
    line("insert", 1, "s", list.build, widget.build, model.build);
    line("expand all", 1, "s", list.expand, widget.expand, model.expand);
    line("insert and expand", 1, "s", list.build + list.expand, widget.build + widget.expand,
         model.build + model.expand);
    line("paint 800 x 600", 1e3, "ms", list.paint, widget.paint, model.paint);
    line("memory a row", 1, "B", list.bytesRow, widget.bytesRow, model.bytesRow);
    std::printf("%-28s %10.3f s\n", "check the root, with cascade", list.cascade);
    std::printf("%-28s %10.3f us (three levels), %.3f us (one level)\n", "position, row, position", list.position * 1e6,
                list.flat * 1e6);
    return 0;
}
