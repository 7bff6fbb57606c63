// Built-in modules: found by name, counted, hidden.
#include <gtest/gtest.h>

#include <array>

#include "rastel/platform/portable/kernel/module_table.h"

using rastel::platform::ModuleEntryPoint;
using rastel::platform::ModuleTable;

namespace {

INT_PTR Seven() {
    return 7;
}

constexpr std::array<ModuleEntryPoint, 1> entryPoints = {{{"Seven", Seven}}};

TEST(Modules, ABuiltInModuleIsFoundInAnyCaseAndCounted) {
    ModuleTable table({{L"ONE.DLL", entryPoints}, {L"TWO.DLL", entryPoints}, {L"ABSENT.DLL", {}}});
    EXPECT_EQ(table.FindLoaded(L"one.dll"), nullptr);
    const HMODULE one = table.Load(L"One");
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(table.Load(L"oNE.dLL"), one);
    EXPECT_EQ(table.FindLoaded(L"ONE"), one);
    EXPECT_NE(table.Load(L"two.dll"), one);
    for (const wchar_t* const none :
         {L"", L".", L"one.", L"one.exe", L"/one.dll", L"C:\\one.dll", L"absent.dll", L"three"}) {
        EXPECT_EQ(table.Load(none), nullptr) << testing::PrintToString(none);
    }
    ASSERT_NE(table.EntryPoint(one, "Seven"), nullptr);
    EXPECT_EQ(table.EntryPoint(one, "Seven")(), 7);
    EXPECT_EQ(table.EntryPoint(one, "seven"), nullptr);
    EXPECT_TRUE(table.Free(one));
    EXPECT_TRUE(table.IsModule(one));
    EXPECT_TRUE(table.Free(one));
    EXPECT_FALSE(table.Free(one));
    EXPECT_EQ(table.EntryPoint(one, "Seven"), nullptr);
}

TEST(Modules, AHiddenModuleDoesNotLoad) {
    ModuleTable table({{L"ONE.DLL", entryPoints}});
    table.Hide(L"one", true);
    EXPECT_EQ(table.Load(L"ONE.DLL"), nullptr);
    table.Hide(L"ONE.DLL", false);
    EXPECT_NE(table.Load(L"ONE.DLL"), nullptr);
}

TEST(Modules, WildHandlesAndNamesAreAnsweredWithNothing) {
    const HMODULE process = ::GetModuleHandleW(nullptr);
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(::GetProcAddress(process, "main"), nullptr);
    EXPECT_EQ(::LoadLibraryW(nullptr), nullptr);
    EXPECT_EQ(::LoadLibraryW(L"libc.so.6"), nullptr);   // real libraries are none of its business
    int local = 0;
    for (const HMODULE wild : {HMODULE{}, reinterpret_cast<HMODULE>(&local), reinterpret_cast<HMODULE>(INT_PTR{-1})}) {
        EXPECT_EQ(::GetProcAddress(wild, "Seven"), nullptr);
        EXPECT_FALSE(::FreeLibrary(wild));
    }
    EXPECT_EQ(::GetProcAddress(process, nullptr), nullptr);
    EXPECT_EQ(::GetProcAddress(process, reinterpret_cast<LPCSTR>(INT_PTR{17})), nullptr);   // by number
}

}   // namespace
