#include "varnel/foundation/detail/added_fields.h"

#include <gtest/gtest.h>

#include "tests/support/told.h"

namespace varnel {
namespace {

using detail::AddedFields;

/// Something with a field of every kind.
struct Thing {
    struct Added {
        int number = 7;
        double size = 0.5;
        CString name = "none";
        point3Dtype place{1, 2, 3, 0};
        RGBDType color{0, 0, 0, 1};
        int flags[3] = {1, 1, 0};
        std::vector<int> numbers{1};
        std::vector<double> sizes;
        std::vector<CString> names;
        std::vector<point3Dtype> places;
        std::vector<RGBDType> colors;
    };
    Added added;
    ObjectList<Thing> things;
    int plain[1] = {0};  // an object without added fields

    void VisitAdded(AddedFields& fields) {
        fields.Of(added, [](auto field) {
            field("number", &Added::number);
            field("size", &Added::size);
            field("name", &Added::name);
            field("place", &Added::place);
            field("color", &Added::color);
            field("flags", &Added::flags);
            field("numbers", &Added::numbers);
            field("sizes", &Added::sizes);
            field("names", &Added::names);
            field("places", &Added::places);
            field("colors", &Added::colors);
        });
        fields.Object("plain", &plain);
        fields.Object<Thing>("missing", nullptr);
        fields.List("thing", things);
    }
};

/// An older or newer kind of Thing: one name less, one that nobody else has, one of another type.
struct OtherThing {
    struct Added {
        int number = 7;
        int future = 0;
        double flags = 0;
    };
    Added added;
    void VisitAdded(AddedFields& fields) {
        fields.Of(added, [](auto field) {
            field("number", &Added::number);
            field("future", &Added::future);
            field("flags", &Added::flags);
        });
    }
};

Thing::Added Everything() {
    return {8,
            0.1,
            "a\0b\n",
            {4, 5, 6, 7},
            {1, 0.5, 0, 1},
            {0, 0, 5},
            {},
            {},
            {"", "x"},
            {{1, 2, 3, 4}},
            {{1, 1, 1, 1}, {0, 0, 0, 0}}};
}

template <class T>
std::vector<BYTE> BlockOf(T& thing) {
    AddedFields fields;
    thing.VisitAdded(fields);
    MemoryFile file;
    fields.WriteBlock(file);
    return file.GetBytes();
}

template <class T>
bool Read(const std::vector<BYTE>& bytes, T& thing) {
    MemoryFile file(bytes);
    bool complete = false;
    AddedFields fields = AddedFields::ReadBlock(file, complete);
    thing.VisitAdded(fields);
    fields.TellUnknown();
    return complete;
}

bool IsDefault(Thing& thing) {
    return BlockOf(thing).empty();
}

TEST(AddedFields, EveryKindOfFieldComesBackAndDefaultsAreNotWritten) {
    Thing saved;
    saved.things.Append(std::make_unique<Thing>());
    saved.things.Append(std::make_unique<Thing>())->added = Everything();
    EXPECT_TRUE(BlockOf(*saved.things.GetAt(0)).empty());
    saved.added.size = 2;
    const std::vector<BYTE> block = BlockOf(saved);
    Thing loaded;
    loaded.added.name = "what the file does not name gets its default";
    for (int i = 0; i < 2; ++i)
        loaded.things.Append(std::make_unique<Thing>());
    EXPECT_TRUE(Read(block, loaded));
    EXPECT_EQ(BlockOf(loaded), block);
    EXPECT_EQ(loaded.added.size, 2);
    EXPECT_EQ(loaded.added.name, "none");
    EXPECT_TRUE(IsDefault(*loaded.things.GetAt(0)));
    EXPECT_EQ(loaded.things.GetAt(1)->added.names[1], "x");
    EXPECT_EQ(loaded.things.GetAt(1)->added.places[0].w, 4);
    EXPECT_EQ(loaded.things.GetAt(1)->added.flags[2], 5);
    EXPECT_TRUE(loaded.things.GetAt(1)->added.numbers.empty());
}

TEST(AddedFields, DamageAnywhereLeavesTheWholeBlockOut) {
    Thing saved;
    saved.added = Everything();
    const std::vector<BYTE> block = BlockOf(saved);
    for (std::size_t at = 0; at < block.size(); ++at) {
        for (const int change : {1, 0x80, 0xFF}) {
            std::vector<BYTE> damaged = block;
            damaged[at] = static_cast<BYTE>(damaged[at] ^ change);
            Thing thing;
            thing.added.number = 99;
            EXPECT_FALSE(Read(damaged, thing)) << at;
            EXPECT_TRUE(IsDefault(thing)) << at;
        }
        Thing thing;
        EXPECT_EQ(Read({block.begin(), block.begin() + static_cast<std::ptrdiff_t>(at)}, thing),
                  at == 0);
        EXPECT_TRUE(IsDefault(thing)) << "cut at " << at;
    }
}

TEST(AddedFields, UnknownNamesAndOtherTypesAreSkippedAndTold) {
    OtherThing newer;
    newer.added = {3, 4, 5};
    Thing thing;
    const std::string told = test::Told([&] { EXPECT_TRUE(Read(BlockOf(newer), thing)); });
    EXPECT_EQ(thing.added.number, 3);
    EXPECT_EQ(thing.added.flags[0], 1) << "of another type";
    EXPECT_NE(told.find("\nLoad: the file's setting future of the view is not known here\n"),
              std::string::npos)
        << told;
}

}  // namespace
}  // namespace varnel
