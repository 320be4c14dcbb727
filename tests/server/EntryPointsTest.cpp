// The entry points of the module: exports, class objects, and when the module may unload.

#include "ServerTest.h"

#include <thread>

namespace solvane {

namespace {

constexpr CLSID unknownClass{0x12345678, 0x93B4, 0x4D0E, {0x8A, 0x61, 0x2F, 0x0D, 0x7B, 0x9C, 0x41, 0xE3}};

using EntryPoints = ServerTest;

std::vector<std::string> exportsOf(HMODULE module) {
    const auto* base = reinterpret_cast<const BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& entry = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + directory->AddressOfNames);
    std::vector<std::string> result;
    for (DWORD i = 0; i < directory->NumberOfNames; ++i)
        result.emplace_back(reinterpret_cast<const char*>(base + names[i]));
    EXPECT_EQ(directory->NumberOfFunctions, directory->NumberOfNames);
    return result;
}

TEST_F(EntryPoints, areFourAndUndecorated) {
    EXPECT_EQ(exportsOf(module.handle()),
              (std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                        "DllUnregisterServer"}));
}

TEST_F(EntryPoints, rejectAClassObjectWithAnEmptyResult) {
    void* const garbage = this;
    void* result = garbage;
    EXPECT_EQ(module.getClassObject(unknownClass, IID_IClassFactory, &result), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(result, nullptr);
    result = garbage;
    EXPECT_EQ(module.getClassObject(portClass, IID_IDispatch, &result), E_NOINTERFACE);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(module.getClassObject(portClass, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(EntryPoints, keepTheModuleForObjectsAndLocksOnly) {
    EXPECT_EQ(module.canUnloadNow(), S_OK);
    for (const NamedClass& row : allClasses) {
        SCOPED_TRACE(row.name);
        const ComRef<IClassFactory> factory = module.factory(row.id);
        void* result = this;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStorage, &result), E_NOINTERFACE);
        EXPECT_EQ(result, nullptr);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
        EXPECT_EQ(module.canUnloadNow(), S_OK);
        ComRef<ICapeIdentification> object = module.create<ICapeIdentification>(row.id);
        EXPECT_TRUE(object);
        ComRef<ICapeIdentification> second = object;
        EXPECT_EQ(module.canUnloadNow(), S_FALSE);
        object.reset();
        EXPECT_EQ(module.canUnloadNow(), S_FALSE);
        second.reset();
        EXPECT_EQ(module.canUnloadNow(), S_OK);
        factory->LockServer(TRUE);
        factory->LockServer(TRUE);
        factory->LockServer(FALSE);
        EXPECT_EQ(module.canUnloadNow(), S_FALSE);
        factory->LockServer(FALSE);
        EXPECT_EQ(module.canUnloadNow(), S_OK);
    }
}

// An object that the host still holds keeps the module loaded, which contains its code.
TEST_F(EntryPoints, keepTheModuleForAnObjectThatOutlivesItsUnit) {
    ComRef<ICapeUtilities> unit = module.create<ICapeUtilities>(solvaneUnitOpClass);
    ComRef<IDispatch> parameters;
    ASSERT_EQ(unit->get_parameters(parameters.put()), S_OK);
    unit.reset();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE);
    LONG count = -1;
    EXPECT_EQ(parameters.as<ICapeCollection>()->Count(&count), S_OK);
    EXPECT_EQ(count, 0);
    parameters.reset();
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

TEST_F(EntryPoints, giveConcurrentThreadsOneFactory) {
    constexpr int threadCount = 4;
    for (int round = 0; round < 10; ++round) {
        // A fresh copy of the module, which has no factory yet.
        const std::wstring path = temporary.path() + L"copy" + std::to_wstring(round) + L".dll";
        CopyFileW(UnitModule::builtPath().c_str(), path.c_str(), TRUE);
        const UnitModule fresh(path);
        const Handle start(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        std::vector<ComRef<IUnknown>> factories(threadCount);
        std::vector<std::thread> threads;
        for (ComRef<IUnknown>& factory : factories)
            threads.emplace_back([&] {
                WaitForSingleObject(start.get(), INFINITE);
                fresh.getClassObject(portClass, IID_IUnknown, factory.putVoid());
            });
        SetEvent(start.get());
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_TRUE(factories[0]);
        for (const ComRef<IUnknown>& factory : factories)
            EXPECT_EQ(factory.get(), factories[0].get());
        factories.clear();
    }
}

} // namespace

} // namespace solvane
