// Views on several threads, each staying on its own.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "varnel/varnel.h"

namespace varnel {
namespace {

/// A whole life of a view, several times over; the bytes of its last picture.
std::vector<BYTE> DrawViews(double turn) {
    std::vector<BYTE> picture;
    for (int round = 0; round < 4; ++round) {
        CWnd window(120, 90);
        CChartView3D view(&window, 120, 90);
        CTransform3D* t = nullptr;
        CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {10, 1, 10, 0}, &t);
        t->SetRotate({-20, 0, turn, 0});
        chart->AutoAxes(t);
        chart->GetHeader()->SetTitle1("thread");
        double x[] = {1, 4, 7};
        double y[] = {3, 9, 5};
        chart->NewChartObj(t)->BarChart25D(x, y, 0, 0, 3, 2, 1, {0.8, 0.3, 0.1, 1}, {0, 0, 0, 1}, 0,
                                           0, 0);
        view.SetViewSizePrinter();
        view.DrawView();
        CDIBSection& section = *view.GetDIBSectionPntr();
        picture.assign(section.FindDIBBits(),
                       section.FindDIBBits() + section.StorageWidth() * section.DIBHeight());
    }
    return picture;
}

TEST(Threads, ViewsOnThreadsOfTheirOwnDrawTheirPictures) {
    const std::vector<double> turns = {10, 25, 40};
    std::vector<std::vector<BYTE>> alone(turns.size());
    std::vector<std::vector<BYTE>> together(turns.size());
    for (std::size_t i = 0; i < turns.size(); ++i)
        alone[i] = DrawViews(turns[i]);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < turns.size(); ++i)
        threads.emplace_back([&, i] { together[i] = DrawViews(turns[i]); });
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < turns.size(); ++i)
        EXPECT_EQ(together[i], alone[i]) << turns[i];
    EXPECT_NE(alone[0], alone[1]);
}

}  // namespace
}  // namespace varnel
