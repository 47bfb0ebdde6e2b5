#include "materials/channels.h"

#include <set>

#include "base/text.h"
#include "materials/materials_test_support.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

class ChannelsTest : public MaterialsTest {
  protected:
    // The channels of the material in that place.
    ChannelTable collect(int place = 0) {
        if (!host_) makeHost();
        auto channels = collectChannels(context(), material(place), {"m", "sky.dds"});
        EXPECT_TRUE(channels.has_value());
        return channels.value_or(ChannelTable());
    }

    // The slot that `map` feeds, in the given place of the scene's folder.
    ChannelSlot fedBy(const std::string& file, Color color) const {
        const std::filesystem::path path = sources_ / file;
        return {color, utf8Path(path), utf8Path(path.filename()), path.u16string()};
    }
};

constexpr Color kNone{0, 0, 0, 0};
constexpr Color kWhite{1, 1, 1, 1};
constexpr Color kFlat{0.5F, 0.5F, 1, 1};

TEST_F(ChannelsTest, OfTheMissingMaterialAreTheDefaults) {
    const auto channels = collectChannels(context(), nullptr, {"default", "sky.dds"});
    ASSERT_TRUE(channels);
    EXPECT_EQ(*channels, (ChannelTable{{"ao", {kWhite}},
                                       {"diffuse", {kWhite}},
                                       {"light", {kWhite}},
                                       {"metallic", {kNone}},
                                       {"normal", {kFlat}},
                                       {"reflection", {kNone, "", "sky.dds"}},
                                       {"roughness", {kNone}}}));
    EXPECT_THAT(*channels, ElementsAre(Key("ao"), Key("diffuse"), Key("light"), Key("metallic"),
                                       Key("normal"), Key("reflection"), Key("roughness")));
}

TEST_F(ChannelsTest, OfAPhysicalMaterialComeFromItsParameters) {
    for (const char* name : {"c.png", "n.png", "r.png", "m.png", "e.png"}) {
        writeFile(sources_ / name, "x");
        addBitmap(name);
    }
    SnapshotMaterial& physical = addPhysical(u"P");
    setProperty(physical, u"base_color_map", SnapshotMapProperty{0});
    setProperty(physical, u"transparency", 0.25F);
    setProperty(physical, u"bump_map", SnapshotMapProperty{1});
    setProperty(physical, u"roughness_map", SnapshotMapProperty{2});
    setProperty(physical, u"metalness_map", SnapshotMapProperty{3});
    setProperty(physical, u"emission_map", SnapshotMapProperty{4});
    EXPECT_EQ(collect(), (ChannelTable{{"ao", {kWhite}},
                                       {"diffuse", fedBy("c.png", {0.5F, 0.25F, 0.125F, 0.75F})},
                                       {"light", fedBy("e.png", kWhite)},
                                       {"metallic", fedBy("m.png", {0.25F, 0.25F, 0.25F, 1})},
                                       {"normal", fedBy("n.png", kFlat)},
                                       {"reflection", {kNone, "", "sky.dds"}},
                                       {"roughness", fedBy("r.png", {0.5F, 0.5F, 0.5F, 1})}}));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(ChannelsTest, OfAPhysicalMaterialTakeTheAlphaFromTheTransparencyOnly) {
    addPhysical(u"P");
    EXPECT_EQ(collect()["diffuse"].color, (Color{0.5F, 0.25F, 0.125F, 1}));
}

TEST_F(ChannelsTest, KeepTheirDefaultsWherePhysicalParametersAreMissing) {
    SnapshotMaterial& physical = addPhysical(u"P");
    physical.properties.clear();
    physical.properties.push_back({u"base_color", host::Point3{1, 0, 0}});
    physical.properties.push_back({u"roughness", std::u16string(u"0.5")});
    const ChannelTable channels = collect();
    EXPECT_EQ(channels.at("diffuse").color, kWhite);
    EXPECT_EQ(channels.at("roughness").color, kNone);
    EXPECT_EQ(channels.at("metallic").color, kNone);
    EXPECT_THAT(
        told(),
        ElementsAre("material-parameter-missing | P | base_color_map, base_color, transparency, bump_map, "
                    "roughness_map, roughness, metalness_map, metalness, emission_map"));
}

TEST_F(ChannelsTest, OfAPhysicalMaterialTakeBitmapsOnly) {
    const SnapshotRef checker = addMap(u"Checker", u"file.png");
    const SnapshotRef wrapped = addMap(u"Normal Bump", u"", {checker});
    const SnapshotRef empty = addMap(u"Normal Bump", u"n.png");
    const SnapshotRef emptyFirst = addMap(u"Normal Bump", u"", {std::nullopt, checker});
    const SnapshotRef nameless = addMap(u"Bitmap", u"");
    SnapshotMaterial& physical = addPhysical(u"P");
    setProperty(physical, u"base_color_map", SnapshotMapProperty{checker});
    setProperty(physical, u"bump_map", SnapshotMapProperty{wrapped});
    setProperty(physical, u"roughness_map", SnapshotMapProperty{empty});
    setProperty(physical, u"metalness_map", SnapshotMapProperty{emptyFirst});
    setProperty(physical, u"emission_map", SnapshotMapProperty{nameless});
    for (const auto& [key, slot] : collect())
        EXPECT_EQ(slot.sourcePath, "") << key;
    EXPECT_THAT(told(), ElementsAre("map-class-not-exported | P | diffuse: Checker",
                                    "map-class-not-exported | P | normal: Checker",
                                    "map-class-not-exported | P | roughness: Normal Bump",
                                    "map-class-not-exported | P | metallic: Normal Bump",
                                    "texture-missing | P | light: the map names no file"));
}

TEST_F(ChannelsTest, OfAStandardMaterialComeFromItsSlots) {
    for (const char* name : {"d.png", "s.png", "g.png", "i.png", "b.png", "x.png"}) {
        writeFile(sources_ / name, "x");
        addBitmap(name);
    }
    SnapshotMaterial& standard = addStandard(u"S");
    standard.diffuse = {0.1F, 0.2F, 0.3F};
    standard.opacity = 0.5F;
    standard.glossiness = 0.25F;
    standard.specular = 0.75F;
    standard.textureMaps = {{8, 4}, {1, 0}, {6, 5}, {2, 1}, {3, 2}, {9, 5}, {5, 3}, {4, 5}, {0, 5}};
    EXPECT_EQ(collect(), (ChannelTable{{"ao", {kWhite}},
                                       {"diffuse", fedBy("d.png", {0.1F, 0.2F, 0.3F, 0.5F})},
                                       {"light", fedBy("i.png", kWhite)},
                                       {"metallic", fedBy("s.png", {0.75F, 0.75F, 0.75F, 1})},
                                       {"normal", fedBy("b.png", kFlat)},
                                       {"reflection", {kNone, "", "sky.dds"}},
                                       {"roughness", fedBy("g.png", {0.25F, 0.25F, 0.25F, 1})}}));
    EXPECT_THAT(told(), ElementsAre("map-slot-not-exported | S | slot 6: Bitmap",
                                    "map-slot-not-exported | S | slot 9: Bitmap",
                                    "map-slot-not-exported | S | slot 4: Bitmap",
                                    "map-slot-not-exported | S | slot 0: Bitmap"));
}

TEST_F(ChannelsTest, TakeTheGlossinessForASpecularThatIsNoNumber) {
    addStandard(u"A colour").specular = host::Point3{0.9F, 0.9F, 0.9F};
    addStandard(u"Nothing");
    for (SnapshotMaterial& standard : scene_.materials)
        standard.glossiness = 0.25F;
    for (int place = 0; place < 2; ++place) {
        const ChannelTable channels = collect(place);
        EXPECT_EQ(channels.at("metallic").color, (Color{0.25F, 0.25F, 0.25F, 1})) << place;
        EXPECT_EQ(channels.at("roughness").color, (Color{0.25F, 0.25F, 0.25F, 1})) << place;
    }
}

TEST_F(ChannelsTest, TakeAnyMapWithAFileFromAStandardMaterialTheLaterOneOfASlot) {
    for (const char* name : {"a.png", "b.png"})
        writeFile(sources_ / name, "x");
    const SnapshotRef first = addBitmap("a.png");
    const SnapshotRef other = addMap(u"Tiles", (sources_ / "b.png").u16string());
    const SnapshotRef noFile = addMap(u"Noise", u"");
    addStandard(u"S").textureMaps = {{1, first}, {1, other}, {2, noFile}};
    const ChannelTable channels = collect();
    EXPECT_EQ(channels.at("diffuse").textureFileName, "b.png");
    EXPECT_EQ(channels.at("metallic").sourcePath, "");
    EXPECT_THAT(told(), ElementsAre("map-class-not-exported | S | metallic: Noise"));
}

TEST_F(ChannelsTest, LookInsideNestedNormalBumps) {
    const SnapshotRef bitmap = addBitmap("n.png");
    const SnapshotRef inner = addMap(u"Normal Bump", u"", {bitmap});
    const SnapshotRef outer = addMap(u"Normal Bump", u"", {inner});
    addStandard(u"S").textureMaps = {{8, outer}};
    setProperty(addPhysical(u"P"), u"bump_map", SnapshotMapProperty{outer});
    EXPECT_EQ(collect(0)["normal"], fedBy("n.png", kFlat));
    EXPECT_EQ(collect(1)["normal"], fedBy("n.png", kFlat));
}

TEST_F(ChannelsTest, EndWhereNormalBumpsHoldEachOther) {
    const SnapshotRef self = addMap(u"Normal Bump", u"x.png", {0});
    addMap(u"Normal Bump", u"", {2});
    addMap(u"Normal Bump", u"", {1});
    addStandard(u"S").textureMaps = {{8, self}, {1, 1}};
    setProperty(addPhysical(u"P"), u"bump_map", SnapshotMapProperty{2});
    for (int place = 0; place < 2; ++place) {
        for (const auto& [key, slot] : collect(place))
            EXPECT_EQ(slot.sourcePath, "") << key;
    }
    EXPECT_THAT(told(), ElementsAre("map-class-not-exported | S | normal: Normal Bump",
                                    "map-class-not-exported | S | diffuse: Normal Bump",
                                    "map-class-not-exported | P | normal: Normal Bump"));
}

TEST_F(ChannelsTest, LookInsideAHundredThousandNormalBumps) {
    const SnapshotRef bitmap = addBitmap("n.png");
    SnapshotRef outer = bitmap;
    for (int i = 0; i < 100000; ++i)
        outer = addMap(u"Normal Bump", u"", {outer});
    addStandard(u"S").textureMaps = {{8, outer}};
    EXPECT_EQ(collect()["normal"], fedBy("n.png", kFlat));
}

TEST_F(ChannelsTest, AreNotGivenForOtherClasses) {
    for (const char16_t* className : {u"", u"Multi/Sub-Object", u"physical material", u"Standard "}) {
        addStandard(u"S").className = className;
    }
    makeHost();
    for (int place = 0; place < 4; ++place)
        EXPECT_FALSE(collectChannels(context(), material(place), {"m", "r"})) << place;
}

TEST_F(ChannelsTest, KeepTheLowBytesOfPaths) {
    addMap(u"Bitmap", u"D:\\maps\\\u0416\u00E9\u0142.png");
    addStandard(u"S").textureMaps = {{1, 0}};
    const ChannelSlot slot = collect()["diffuse"];
    EXPECT_EQ(slot.sourcePath, "D:\\maps\\\x16\xE9\x42.png");
    EXPECT_EQ(slot.textureFileName, "\x16\xE9\x42.png");
    EXPECT_EQ(slot.hostPath, u"D:\\maps\\\u0416\u00E9\u0142.png");
}

TEST_F(ChannelsTest, FindFilesWhereTheHostFindsThem) {
    const std::filesystem::path assets = temporary_.path() / "assets";
    std::filesystem::create_directory(assets);
    writeFile(assets / "wood.png", "x");
    writeFile(sources_ / "here.png", "x");
    scene_.assetFolders = {assets.u16string()};
    addMap(u"Bitmap", u"D:\\lost\\wood.png");
    addMap(u"Bitmap", u"here.png");
    addMap(u"Bitmap", u"/lost/nowhere.png");
    addStandard(u"S").textureMaps = {{1, 0}, {2, 1}, {3, 2}};
    ChannelTable channels = collect();
    EXPECT_EQ(channels["diffuse"].sourcePath, utf8Path(assets / "wood.png"));
    EXPECT_EQ(channels["metallic"].sourcePath, utf8Path(sources_ / "here.png")) << "not the current folder's";
    EXPECT_EQ(channels["roughness"].sourcePath, "/lost/nowhere.png");
}

// A host of files only, which writes down what it is asked.
class FilesHost final : public host::Host, public host::IFileResolutionManager {
  public:
    explicit FilesHost(std::set<host::AssetType> findable) : findable_(std::move(findable)) {}

    host::IGameScene* GetIGameInterface() override { return nullptr; }
    host::IInstanceMgr* GetInstanceMgr() override { return nullptr; }
    host::Interval GetAnimRange() const override { return {0, 0}; }
    bool DoesFileExist(host::HostText file) const override { return file == existing; }
    host::IFileResolutionManager* GetFileResolutionManager() override { return hasManager ? this : nullptr; }
    void Sleep(std::uint32_t) override {}
    bool GetFullFilePath(std::u16string& filePath, host::AssetType type) const override {
        asked.push_back(type);
        if (!findable_.contains(type)) return false;
        filePath = type == host::AssetType::kXRefAsset ? u"/found/as/reference" : u"/found/as/bitmap";
        return true;
    }

    host::HostText existing;
    bool hasManager = true;
    mutable std::vector<host::AssetType> asked;

  private:
    std::set<host::AssetType> findable_;
};

using host::AssetType;

TEST(ResolveMapFile, AsksForOneKindOfFileAndThenTheOther) {
    FilesHost none({});
    EXPECT_EQ(resolveMapFile(none, u"/a/x.png"), u"/a/x.png");
    EXPECT_THAT(none.asked, ElementsAre(AssetType::kXRefAsset, AssetType::kBitmapAsset));

    FilesHost second({AssetType::kBitmapAsset});
    EXPECT_EQ(resolveMapFile(second, u"/a/x.png"), u"/found/as/bitmap");
    EXPECT_THAT(second.asked, ElementsAre(AssetType::kXRefAsset, AssetType::kBitmapAsset));

    FilesHost first({AssetType::kXRefAsset, AssetType::kBitmapAsset});
    EXPECT_EQ(resolveMapFile(first, u"/a/x.png"), u"/found/as/reference");
    EXPECT_THAT(first.asked, ElementsAre(AssetType::kXRefAsset));
}

TEST(ResolveMapFile, AsksNothingAboutAFullPathThatExists) {
    FilesHost files({AssetType::kXRefAsset});
    const std::u16string path = kIsWindows ? u"C:\\a\\x.png" : u"/a/x.png";
    files.existing = path;
    EXPECT_EQ(resolveMapFile(files, path), path);
    EXPECT_THAT(files.asked, IsEmpty());
}

TEST(ResolveMapFile, KeepsTheNameWithoutAManager) {
    FilesHost files({AssetType::kXRefAsset});
    files.hasManager = false;
    EXPECT_EQ(resolveMapFile(files, u"x.png"), u"x.png");
}

}  // namespace
}  // namespace velinor
