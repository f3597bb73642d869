#include "varnel/render/detail/shape_capture.h"

#include <cstddef>

#include "varnel/render/detail/gl.h"

namespace varnel::detail {
namespace {

/// x, y, z in the window and four components of colour.
constexpr std::size_t kFloatsPerVertex = 7;
constexpr std::size_t kFirstRoom = 1U << 16;
constexpr std::size_t kMostRoom = 1U << 26;

/// Runs `draw` in OpenGL's feedback mode; the records grow until they have room.
std::vector<GLfloat> Record(const std::function<void()>& draw) {
    for (std::size_t room = kFirstRoom; room <= kMostRoom; room *= 4) {
        std::vector<GLfloat> records(room);
        glFeedbackBuffer(static_cast<GLsizei>(room), GL_3D_COLOR, records.data());
        glRenderMode(GL_FEEDBACK);
        draw();
        const GLint used = glRenderMode(GL_RENDER);
        if (used < 0) continue;
        records.resize(static_cast<std::size_t>(used));
        return records;
    }
    return {};
}

class Reader {
 public:
    explicit Reader(const std::vector<GLfloat>& records) : m_Records(records) {
        glGetIntegerv(GL_VIEWPORT, m_Viewport);
    }

    bool AtEnd() const { return m_At >= m_Records.size(); }
    double Number() { return AtEnd() ? 0.0 : static_cast<double>(m_Records[m_At++]); }
    ShadedVertex Vertex() {
        const auto device = [](double window, GLint start, GLint extent) {
            return (window - start) / extent * 2.0 - 1.0;
        };
        ShadedVertex vertex;
        vertex.place.x = device(Number(), m_Viewport[0], m_Viewport[2]);
        vertex.place.y = device(Number(), m_Viewport[1], m_Viewport[3]);
        vertex.place.z = Number() * 2.0 - 1.0;
        vertex.color.r = Number();
        vertex.color.g = Number();
        vertex.color.b = Number();
        vertex.color.a = Number();
        return vertex;
    }
    void Skip() { m_At += kFloatsPerVertex; }

 private:
    const std::vector<GLfloat>& m_Records;
    std::size_t m_At = 0;
    GLint m_Viewport[4] = {0, 0, 1, 1};
};

}  // namespace

ShadedShape CaptureShape(const std::function<void()>& draw) {
    ShadedShape shape;
    const std::vector<GLfloat> records = Record(draw);
    Reader reader(records);
    while (!reader.AtEnd()) {
        const auto token = static_cast<GLint>(reader.Number());
        if (token == GL_POLYGON_TOKEN) {
            const auto corners = static_cast<int>(reader.Number());
            if (corners < 3) break;
            const ShadedVertex first = reader.Vertex();
            ShadedVertex last = reader.Vertex();
            for (int i = 2; i < corners; ++i) {
                const ShadedVertex next = reader.Vertex();
                shape.triangles.insert(shape.triangles.end(), {first, last, next});
                last = next;
            }
        } else if (token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN) {
            const ShadedVertex start = reader.Vertex();
            shape.lines.insert(shape.lines.end(), {start, reader.Vertex()});
        } else if (token == GL_PASS_THROUGH_TOKEN) {
            reader.Number();
        } else {
            reader.Skip();  // a point or a bitmap
        }
    }
    return shape;
}

}  // namespace varnel::detail
