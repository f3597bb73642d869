// What was drawn, in device coordinates (-1..1): for tests of where things stand in the picture.
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "tests/support/gl_fixture.h"

namespace varnel::test {

struct DrawnVertex {
    double x, y, z;
    double r, g, b;
};

struct Drawn {
    std::vector<std::array<DrawnVertex, 3>> triangles;
    std::vector<std::array<DrawnVertex, 2>> lines;

    bool IsEmpty() const { return triangles.empty() && lines.empty(); }

    template <class Visit>
    void ForEachVertex(Visit&& visit) const {
        for (const auto& t : triangles)
            std::for_each(t.begin(), t.end(), visit);
        for (const auto& l : lines)
            std::for_each(l.begin(), l.end(), visit);
    }
};

/// The box around what was drawn; left > right when nothing was.
struct Box {
    double left = 9.0, right = -9.0, bottom = 9.0, top = -9.0, front = 9.0, back = -9.0;

    explicit Box(const Drawn& drawn) {
        drawn.ForEachVertex([this](const DrawnVertex& v) {
            left = std::min(left, v.x);
            right = std::max(right, v.x);
            bottom = std::min(bottom, v.y);
            top = std::max(top, v.y);
            front = std::min(front, v.z);
            back = std::max(back, v.z);
        });
    }
    double CentreX() const { return (left + right) / 2.0; }
    double CentreY() const { return (bottom + top) / 2.0; }
};

/// A context that members of derived fixtures can be bound to.
class DrawingTest : public GLFixture {
 protected:
    DrawingTest() { Open(); }
    void SetUp() override { CErr3D::SetErrorReportMode(0); }

    Drawn Catch(const std::function<void()>& draw) {
        GL().SetCulling(0);  // what would cover no pixel is caught, too
        GL().SyncState();
        Drawn drawn;
        for (const FeedbackPrimitive& primitive : Feedback([&] {
                 draw();
                 GL().SyncState();
             })) {
            std::vector<DrawnVertex> v;
            for (const FeedbackVertex& f : primitive.vertices)
                v.push_back({Device(f.x), Device(f.y), 2.0 * f.z - 1.0, f.r, f.g, f.b});
            if (primitive.IsLine()) drawn.lines.push_back({v[0], v[1]});
            for (std::size_t i = 2; primitive.IsPolygon() && i < v.size(); ++i)
                drawn.triangles.push_back({v[0], v[i - 1], v[i]});
        }
        return drawn;
    }

 private:
    static double Device(double pixel) { return 2.0 * pixel / kSize - 1.0; }
};

}  // namespace varnel::test
