#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include "tests/com/windows/library.h"
#include "tests/com/windows/page.h"
#include "tests/com/windows/visit.h"

// Needs the platform's types.
#include <psapi.h>

extern "C" void WINAPI SetOaNoCache();  // the headers lack it

// What the library holds, and when it lets go of it.
namespace pradelis::test {
namespace {

/// Counts the strings and other blocks of the platform's allocator that are in use in this process.
class AllocationSpy final : public IMallocSpy {
 public:
  /// Begins to count, once for the whole process: the platform cannot end it while a block is in use.
  static AllocationSpy& get() {
    static AllocationSpy* const spy = [] {
      SetOaNoCache();  // freed strings are not kept for the next ones
      auto* const begun = new AllocationSpy;
      CoRegisterMallocSpy(begun);
      return begun;
    }();
    return *spy;
  }

  long blocks() const { return blocks_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    const bool known = IsEqualIID(interface_id, IID_IUnknown) || IsEqualIID(interface_id, IID_IMallocSpy);
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T bytes) override { return bytes; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override {
    if (block) ++blocks_;
    return block;
  }
  void* STDMETHODCALLTYPE PreFree(void* block, BOOL is_counted) override {
    if (block && is_counted) --blocks_;
    return block;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T bytes, void** changed, BOOL) override {
    *changed = block;
    return bytes;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T bytes, BOOL) override { return bytes; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int is_own) override { return is_own; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

 private:
  std::atomic<long> blocks_ = 0;
};

/// What the process uses.
struct Usage {
  long blocks = 0;       ///< of the platform's allocator: strings, arrays
  long heap_blocks = 0;  ///< of all heaps
  long handles = 0;      ///< of the platform
  long files = 0;        ///< open files and sockets of the system below, where there is one
  long memory = 0;       ///< bytes in use

  static Usage now() {
    Usage usage;
    usage.blocks = AllocationSpy::get().blocks();
    usage.heap_blocks = busy_heap_blocks();
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    usage.handles = static_cast<long>(handles);
    std::error_code none_below;
    for (const auto& file : std::filesystem::directory_iterator("Z:/proc/self/fd", none_below)) {
      usage.files += file.path().empty() ? 0 : 1;
    }
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    usage.memory = static_cast<long>(counters.WorkingSetSize);
    return usage;
  }

 private:
  static long busy_heap_blocks() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    long blocks = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
      HeapLock(heaps[i]);
      PROCESS_HEAP_ENTRY entry{};
      while (HeapWalk(heaps[i], &entry)) {
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++blocks;
      }
      HeapUnlock(heaps[i]);
    }
    return blocks;
  }
};

bool is_loaded() { return GetModuleHandleW(library_name) != nullptr; }

/// Lets the platform unload what says that it can be unloaded.
void free_unused() { CoFreeUnusedLibrariesEx(0, 0); }

class Lifetime : public testing::Test {
 protected:
  Lifetime() { connect(page()); }
  ~Lifetime() override { page().application->set_text(L"dataconn_ConnectionString", L""); }
};

TEST_F(Lifetime, TheLibraryGoesWithItsLastObjectAndComesBack) {
  for (int again = 0; again < 10; ++again) {
    {
      const com::Reference<_CRM> crm = create_crm();
      ASSERT_TRUE(crm);
      visit(page());
      EXPECT_EQ(Library().call("DllCanUnloadNow"), S_FALSE) << "an object is alive";
    }
    free_unused();
    EXPECT_FALSE(is_loaded());
  }
}

TEST_F(Lifetime, WhatIsHandedOutKeepsTheLibrary) {
  com::Reference<IDispatch> connection;
  com::Reference<IClassFactory> factory;
  {
    CLSID class_id;
    const com::Reference<_CRM> crm = create_crm();
    ASSERT_EQ(crm->get_QLCConn(connection.receiver()), S_OK);
    ASSERT_EQ(CLSIDFromProgID(L"Pradelis.CRM", &class_id), S_OK);
    ASSERT_EQ(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                               factory.untyped_receiver()),
              S_OK);
  }
  for (int held = 0; held < 3; ++held) {
    if (held == 1) factory = {};
    if (held == 2) connection = {};
    EXPECT_EQ(Library().call("DllCanUnloadNow"), held < 2 ? S_FALSE : S_OK) << held;
  }
  free_unused();
  EXPECT_FALSE(is_loaded());
}

/// 10,000 unless the environment says otherwise; each creates the object and calls it some hundred times.
int number_of_visits() {
  const char* wanted = std::getenv("PRADELIS_TEST_VISITS");
  return wanted ? std::atoi(wanted) : 10'000;
}

TEST_F(Lifetime, VisitsLeaveNothingBehind) {
  const int visits = number_of_visits();
  constexpr int warm_up = 200;
  AllocationSpy::get();
  for (int i = 0; i < warm_up; ++i) visit(page());
  ASSERT_FALSE(HasFatalFailure());
  const Usage before = Usage::now();
  for (int i = 0; i < visits && !HasFailure(); ++i) visit(page());
  const Usage after = Usage::now();
  std::printf(
      "after %d visits: %+ld strings and arrays, %+ld blocks of %ld in the heaps, %+ld handles, %+ld files, %+ld KB\n",
      visits, after.blocks - before.blocks, after.heap_blocks - before.heap_blocks, after.heap_blocks,
      after.handles - before.handles, after.files - before.files, (after.memory - before.memory) / 1024);
  EXPECT_EQ(after.blocks, before.blocks);
  constexpr long few = 100;  // unused connections come and go by the clock; a leak would show in each visit
  EXPECT_LE(after.heap_blocks - before.heap_blocks, few);
  EXPECT_LE(after.handles, before.handles);
  EXPECT_LE(after.files - before.files, few);
  EXPECT_LE(after.memory - before.memory, 1'000'000);  // a hundred bytes for each visit
}

TEST_F(Lifetime, ThreadsHaveApartmentsOfTheirOwn) {
  constexpr int threads = 8;
  constexpr int visits = 40;
  std::atomic<int> failed = 0;
  std::vector<std::thread> running;
  for (int number = 0; number < threads; ++number) {
    running.emplace_back([&failed, number] {
      CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
      auto* const own = new PageObjects;  // the thread's class object outlives the thread
      if (FAILED(register_app_server(*own))) ++failed;
      connect(*own);
      own->application->set_text(L"Link_local", L"/crm" + std::to_wstring(number));
      const std::wstring image = L"src=\"/crm" + std::to_wstring(number) + L"/images/";
      for (int i = 0; i < visits; ++i) {
        visit(*own);
        if (own->response->text.find(image) == std::wstring::npos) ++failed;
      }
      CoUninitialize();
    });
  }
  for (std::thread& thread : running) thread.join();
  EXPECT_EQ(failed, 0);
  // Wine keeps a library that was loaded for a thread's apartment, whatever that says.
  EXPECT_EQ(Library().call("DllCanUnloadNow"), S_OK) << "an ended thread holds nothing";
}

}  // namespace
}  // namespace pradelis::test
