// The choice and the place of the gateway's build for each Matlab.

#include "RuntimeTest.h"

#include <algorithm>

namespace solvane {

namespace {

/// The module in its own folder beside three builds of a gateway, each of which contains its own name.
class MexPlacement : public RuntimeTest {
protected:
    MexPlacement() {
        CreateDirectoryW(moduleFolder.c_str(), nullptr);
        CopyFileW(UnitModule::builtPath().c_str(), modulePath.c_str(), TRUE);
        for (const std::string ending : {"dll5", "mexw32-77", "mexw64-77"})
            writeFile(moduleFolder + L"CapeOpenUnitMex." + widen(ending), ending);
    }

    std::wstring gatewayFolder(const std::wstring& version) const {
        return temporary.path() + L"SolvaneUnitMEX" + version + L"\\";
    }

    /// Creates the first unit of a process, and terminates it.
    void placeFor(const std::wstring& version) {
        matlab.registration.setCurrentVersion(version);
        const UnitModule fresh(modulePath);
        EXPECT_EQ(HostedUnit(fresh).as<ICapeUtilities>()->Initialize(), S_OK);
    }

    /// "name: contents" of the files in the folder for a version.
    std::vector<std::string> placed(const std::wstring& version) const {
        std::vector<std::string> files;
        for (const std::wstring& name : namesIn(gatewayFolder(version)))
            files.push_back(narrow(name) + ": " + readFile(gatewayFolder(version) + name));
        return files;
    }

    const std::wstring moduleFolder = temporary.path() + L"module\\";
    const std::wstring modulePath = moduleFolder + L"SolvaneUnitOperation.dll";
    const std::vector<std::string> oldBuild{"CapeOpenUnitMex.dll: dll5"};
    const std::vector<std::string> laterBuilds{"CapeOpenUnitMex.mexw32: mexw32-77",
                                               "CapeOpenUnitMex.mexw64: mexw64-77"};
};

TEST_F(MexPlacement, choosesBuildsByVersion) {
    const struct {
        const wchar_t* version;
        bool isOld;
    } cases[] = {
        {L"Matlab.Application.5.3", true},   {L"Matlab.Application.6.5", true},
        {L"Matlab.Application.7.0", true},   {L"Matlab.Application.7.0.1", true},
        {L"Matlab.Application.7.10", false}, {L"Matlab.Application.7", false},
        {L"Matlab.Application.7.", false},   {L"Matlab.Application.8.0", false},
        {L"Matlab.Application.9.14", false}, {L"Matlab.Application.10.0", false},
        {L"Matlab.Application.", false},     {L"Matlab", false},
    };
    for (const auto& row : cases) {
        placeFor(row.version);
        EXPECT_EQ(placed(row.version), row.isOld ? oldBuild : laterBuilds) << narrow(row.version);
    }
}

TEST_F(MexPlacement, deletesTheOldBuildAndToleratesAMissingOne) {
    const std::wstring version = L"Matlab.Application.9.14";
    CreateDirectoryW(gatewayFolder(version).c_str(), nullptr);
    writeFile(gatewayFolder(version) + L"CapeOpenUnitMex.dll", "left over");
    writeFile(gatewayFolder(version) + L"CapeOpenUnitMex.mexw64", "outdated");
    placeFor(version);
    EXPECT_EQ(placed(version), laterBuilds);
    DeleteFileW((moduleFolder + L"CapeOpenUnitMex.mexw64-77").c_str());
    placeFor(L"Matlab.Application.9.15");
    EXPECT_EQ(placed(L"Matlab.Application.9.15"), std::vector<std::string>{laterBuilds[0]});
}

TEST_F(MexPlacement, happensOncePerProcess) {
    const std::wstring version = L"Matlab.Application.9.14";
    const UnitModule fresh(modulePath);
    const HostedUnit first(fresh);
    writeFile(gatewayFolder(version) + L"CapeOpenUnitMex.mexw64", "in use");
    matlab.registration.setCurrentVersion(L"Matlab.Application.6.5");
    const HostedUnit second(fresh);
    EXPECT_EQ(placed(version)[1], "CapeOpenUnitMex.mexw64: in use");
    EXPECT_EQ(placed(L"Matlab.Application.6.5"), std::vector<std::string>());
    const std::wstring onPath = gatewayFolder(version).substr(0, gatewayFolder(version).size() - 1);
    EXPECT_EQ(std::ranges::count(matlab.calls(), L"addpath '" + onPath + L"'"), 2);
}

TEST_F(MexPlacement, failsWithoutAVersionAndIsRetriedByTheNextUnit) {
    matlab.registration.removeCurrentVersion();
    const UnitModule fresh(modulePath);
    const HostedUnit unit(fresh);
    EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), capeFailure);
    EXPECT_EQ(unit.errorDescription(),
              L"Unable to determine current version of Matlab.Application; Matlab not installed?");
    EXPECT_EQ(placed(L"SolvaneUnitMEX"), std::vector<std::string>());
    EXPECT_EQ(std::ranges::count(namesIn(temporary.path()), L"SolvaneUnitMEXSolvaneUnitMEX"), 1);
    EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());

    matlab.registration.setCurrentVersion(L"Matlab.Application.7.0");
    EXPECT_EQ(HostedUnit(fresh).as<ICapeUtilities>()->Initialize(), S_OK);
    EXPECT_EQ(placed(L"Matlab.Application.7.0"), oldBuild);
}

} // namespace

} // namespace solvane
