// Model files and streams with random damage: whatever the bytes, the unit says what is wrong and goes on. A
// mutation is made from its number alone, so that a failure can be repeated.

#include "ModelFileTest.h"
#include "ProcessUsage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace solvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int ordinaryCount = 10000;
constexpr int longCount = 300000; ///< with SOLVANE_LONG set

/// Makes random damage to some bytes.
class Damage {
public:
    explicit Damage(int number) : random_(static_cast<unsigned>(number)) {}

    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    void to(std::string& bytes) {
        for (std::size_t count = 1 + below(3); count > 0; --count)
            once(bytes);
    }

private:
    void once(std::string& bytes) {
        // What a reader of zips and of XML may stumble over.
        static const std::string snippets[] = {
            {"\xFF\xFF\xFF\xFF", 4},
            {"\0\0\0\0", 4},
            {"\0\0\0\x80", 4},
            "PK\1\2",
            "PK\3\4",
            "PK\5\6",
            "PK\6\7",
            "<",
            "/>",
            "</parameter>",
            "</report>",
            "<option value=\"x\"/>",
            "&#0;",
            "&#xD800;",
            "&lt",
            "]]>",
            "<![CDATA[",
            "<!--",
            "<?x",
            "<!DOCTYPE a [",
            "\"",
            "name=\"calc.m\"",
            "name=\"unit.xml\"",
            "name=\"_unitOperationModel_.svm\"",
            "1e999",
            "-",
            "\xC3\xA9",
            "\xF8",
            "<file name=\"../../x\" />",
        };
        const std::size_t place = below(bytes.size() + 1);
        const std::size_t length = std::min(below(16), bytes.size() - place);
        switch (below(6)) {
        case 0:
            if (place < bytes.size())
                bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
            break;
        case 1:
            bytes.replace(place, length, snippets[below(std::size(snippets))]);
            break;
        case 2:
            bytes.insert(place, snippets[below(std::size(snippets))]);
            break;
        case 3:
            bytes.erase(place, length);
            break;
        case 4:
            bytes.insert(below(bytes.size() + 1), bytes.substr(place, below(200)));
            break;
        case 5:
            if (below(8) == 0)
                bytes.resize(place);
            break;
        }
    }

    std::mt19937 random_;
};

class Mutation : public ModelFileTest {
protected:
    const std::vector<Entry> model{
        {"unit.xml",
         document(
             "<docInfo version=\"1\" infoLevel=\"0\" />\n<report name=\"Matlab Output\">a&#xA;b</report>\n"
             "<report name=\"R\"></report>\n<feed name=\"F\" />\n<product name=\"P\" />\n"
             "<parameter name=\"r\" mode=\"input\" type=\"real\" value=\"1.5\" min=\"0\" max=\"2\" "
             "def=\"1\" uom=\"1,0,-2\" />\n"
             "<parameter name=\"i\" mode=\"output\" type=\"int\" value=\"3\" min=\"0\" />\n"
             "<parameter name=\"b\" mode=\"input\" type=\"bool\" value=\"TRUE\" def=\"FALSE\" />\n"
             "<parameter name=\"s\" mode=\"input\" type=\"string\" value=\"x\" restricted=\"TRUE\" >\n"
             " <option value=\"x\"/>\n <option value=\"y\"/>\n</parameter>\n<file name=\"data.txt\" />\n")},
        {"calc.m", "x = 1;\n"},
        {"data.txt", std::string(3000, 'd')},
    };
    const std::string container = zipOf(model, temporary.path());

    /// A stream with damage to its bytes, to those of its container, or to the document in it.
    HostStream mutated(int number) const {
        Damage damage(number);
        if (number % 3 == 0) {
            std::vector<Entry> entries = model;
            damage.to(entries[0].second);
            return HostStream(zipOf(entries, temporary.path()));
        }
        std::string bytes = container;
        if (number % 3 == 1) {
            damage.to(bytes);
            return HostStream(bytes);
        }
        HostStream stream(container);
        damage.to(stream.bytes);
        return stream;
    }
};

TEST_F(Mutation, damagedModelsNeitherCrashNorLeakNorLeaveTheFolder) {
    const int count = std::getenv("SOLVANE_LONG") ? longCount : ordinaryCount;
    const int warmUp = count / 10;
    const std::vector<std::wstring> outside = namesIn(temporary.path());
    const std::vector<std::wstring> current = namesIn(L".\\");
    ProcessUsage before;
    int loaded = 0;
    auto longest = Clock::duration::zero();
    const auto start = Clock::now();
    for (int number = 0; number < count; ++number) {
        if (number == warmUp)
            before = ProcessUsage::now();
        HostStream stream = mutated(number);
        boxes.clear();
        const auto began = Clock::now();
        const HRESULT hr = unit.as<IPersistStream>()->Load(&stream);
        longest = std::max(longest, Clock::now() - began);
        loaded += hr == S_OK;
        if (hr != S_OK && hr != E_OUTOFMEMORY) {
            ASSERT_EQ(hr, static_cast<HRESULT>(0x80040501)) << "mutation " << number;
            ASSERT_FALSE(unit.errorDescription().empty()) << "mutation " << number;
        }
    }
    const ProcessUsage after = ProcessUsage::now();
    const auto inSeconds = [](Clock::duration time) { return std::chrono::duration<double>(time).count(); };
    std::printf("%d mutated models in %.1f s, the longest in %.3f s; %d of them loaded; %zu kB more\n", count,
                inSeconds(Clock::now() - start), inSeconds(longest), loaded,
                (after.memory - before.memory) / 1024);
    EXPECT_GT(loaded, count / 100); // else the damage is too coarse to reach far
    EXPECT_LT(loaded, count * 9 / 10);
    EXPECT_LT(inSeconds(longest), 10);
    EXPECT_NE(before.handles, 0U);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_LT(after.memory, before.memory + (2U << 20));
    EXPECT_EQ(namesIn(temporary.path()), outside);
    EXPECT_EQ(namesIn(L".\\"), current);
    ASSERT_EQ(load(container), S_OK);
    EXPECT_EQ(unit.parameter(L"r").real(), 1.5);
}

} // namespace
} // namespace solvane
