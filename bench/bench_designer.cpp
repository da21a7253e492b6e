// What one event costs on a surface of 1,000 items, the painting that follows it included. The limit for a surface that
// feels fluid is one frame of the screen, 16 ms.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <string>

#include "designer/SurfaceFrame.h"
#include "model/DesignGrid.h"

namespace quillform::designer {
namespace {

constexpr int itemCount = 1000;

/// 1,000 items, either over a Tabloid page, a third of them in view, or all of them in view, in layers.
class Desk {
public:
    explicit Desk(bool allInView) {
        surface.ClearLayout();
        layout.settings.intPaperSize = 3;
        surface.SetPageSize();
        const int across = allInView ? 7 : 13;
        const int down = allInView ? 19 : 100;
        for (int i = 0; i < itemCount; ++i) {
            clssFields item;
            item.Code = static_cast<std::int16_t>(i % 900);
            item.Left = static_cast<float>(i % across * 10 + 1);
            item.Top = static_cast<float>(i / across % down);
            item.Length = 8;
            item.Text = "Field number " + std::to_string(i);
            item.FontName = i % 3 == 0 ? "Arial" : "Times New Roman";
            item.FontSize = 8 + i % 3;
            item.FontBold = i % 5 == 0;
            item.FontForeColor = i % 16;
            item.FontBackColor = i % 7 == 0 ? 7 : 15;
            item.FontAllignment = i % 2 == 0 ? "L" : "R";
            item.Index = static_cast<std::int16_t>(i + 1);
            layout.pictures[item.Index] = MeasureItem(item, fonts);
            layout.Fields.Add(item);
        }
        surface.ShowItems();
        surface.onChange = [this] { frame.Follow(); };
        frame.resize(frame.minimumSizeHint());
        frame.show();
        QApplication::processEvents();
    }
    void Paint() { frame.View().render(&image); }
    void Mouse(QEvent::Type type, double x, double y, Qt::MouseButton button, Qt::MouseButtons held) {
        const QSizeF cell = frame.View().CellSize();
        const QPointF place(x * cell.width(), y * cell.height());
        QMouseEvent event(type, place, frame.View().mapToGlobal(place), button, held, Qt::NoModifier);
        QApplication::sendEvent(&frame.View(), &event);
    }

    Layout layout;
    ScreenFonts fonts;
    DesignSurface surface{layout, fonts};
    SurfaceFrame frame{surface, fonts};
    QImage image{608, 316, QImage::Format_ARGB32_Premultiplied};
};

void Paint(benchmark::State& state) {
    Desk desk(state.range(0) != 0);
    for (auto step : state) desk.Paint();
}
void ScrollByARow(benchmark::State& state) {
    Desk desk(state.range(0) != 0);
    int row = 0;
    for (auto step : state) {
        row = (row + 1) % 80;
        desk.surface.ScrollTo(0, row);
        desk.Paint();
    }
}
void MoveTheMouse(benchmark::State& state) {
    Desk desk(state.range(0) != 0);
    double x = 0;
    for (auto step : state) {
        x = x > 70 ? 0 : x + 0.5;
        desk.Mouse(QEvent::MouseMove, x, 9.5, Qt::NoButton, Qt::NoButton);
    }
}
void DragAnItem(benchmark::State& state) {
    Desk desk(state.range(0) != 0);
    desk.Mouse(QEvent::MouseMove, 3, 5.5, Qt::NoButton, Qt::NoButton);
    desk.Mouse(QEvent::MouseButtonPress, 3, 5.5, Qt::LeftButton, Qt::LeftButton);
    double x = 0;
    for (auto step : state) {
        x = x > 70 ? 0 : x + 0.5;
        desk.Mouse(QEvent::MouseMove, x, 9.5, Qt::NoButton, Qt::LeftButton);
        desk.Paint();
    }
}
void DropAnItem(benchmark::State& state) {
    Desk desk(state.range(0) != 0);
    for (auto step : state) {
        desk.Mouse(QEvent::MouseMove, 3, 5.5, Qt::NoButton, Qt::NoButton);
        desk.Mouse(QEvent::MouseButtonPress, 3, 5.5, Qt::LeftButton, Qt::LeftButton);
        desk.Mouse(QEvent::MouseButtonRelease, 3, 5.5, Qt::LeftButton, Qt::NoButton);
        desk.Paint();
    }
}

#define DESIGNER_BENCH(name) BENCHMARK(name)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)
DESIGNER_BENCH(Paint);
DESIGNER_BENCH(ScrollByARow);
DESIGNER_BENCH(MoveTheMouse);
DESIGNER_BENCH(DragAnItem);
DESIGNER_BENCH(DropAnItem);

}  // namespace
}  // namespace quillform::designer

int main(int count, char** words) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, words);
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
