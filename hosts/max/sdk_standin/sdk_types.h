// Basic types of 3ds Max's SDK: numbers, text, time, tables, class identities.
//
// The headers of this folder declare, under the SDK's own names, the part of it that tolvex uses, so that the
// plug-in builds and is tested where the SDK is not at hand. They include C's headers of types and nothing
// else, so that a compiler for another system can read them, too.
#pragma once

#include <stddef.h>
#include <stdint.h>

// What the stand-in's library gives, as the SDK's own libraries do.
#if defined(_WIN32) && defined(MAX_SDK_STANDIN_LIBRARY)
#define MAX_SDK_API __declspec(dllexport)
#elif defined(_WIN32)
#define MAX_SDK_API __declspec(dllimport)
#else
#define MAX_SDK_API __attribute__((visibility("default")))
#endif

// The types of Windows, as its own headers declare them there.
#if defined(_WIN32)
typedef unsigned long DWORD;
typedef unsigned long ULONG;
typedef wchar_t MCHAR;  // UTF-16
#else
typedef uint32_t DWORD;
typedef uint32_t ULONG;
typedef char16_t MCHAR;
#endif
typedef int BOOL;
typedef unsigned int UINT;
struct HWND__;
typedef HWND__* HWND;
struct HINSTANCE__;
typedef HINSTANCE__* HINSTANCE;

// The release that is stood in for.
#define MAX_RELEASE 25000
#define MAX_API_NUM 62
#define MAX_SDK_REV 0
#define VERSION_3DSMAX ((MAX_RELEASE << 16) + (MAX_API_NUM << 8) + MAX_SDK_REV)

// Objects that the host deletes come from the host's heap.
class MaxHeapOperators {
  public:
    // Throws std::bad_alloc.
    MAX_SDK_API static void* operator new(size_t size);
    MAX_SDK_API static void operator delete(void* memory);
};

typedef int TimeValue;  // ticks, 4800 a second
#define TIME_NegInfinity TimeValue(0x80000000)
#define TIME_PosInfinity TimeValue(0x7fffffff)

class Interval {
  public:
    Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}
    TimeValue Start() const { return start_; }
    TimeValue End() const { return end_; }

  private:
    TimeValue start_;
    TimeValue end_;
};
#define FOREVER Interval(TIME_NegInfinity, TIME_PosInfinity)

// Text that owns its characters.
class WStr {
  public:
    WStr() : WStr(nullptr) {}
    WStr(const MCHAR* text) : length_(lengthOf(text)), data_(new MCHAR[length_ + 1]) {
        for (size_t i = 0; i < length_; ++i)
            data_[i] = text[i];
        data_[length_] = 0;
    }
    WStr(const WStr& other) : WStr(other.data_) {}
    WStr& operator=(const WStr& other) {
        WStr copy(other);
        MCHAR* data = data_;
        data_ = copy.data_;
        copy.data_ = data;
        length_ = other.length_;
        return *this;
    }
    ~WStr() { delete[] data_; }

    const MCHAR* data() const { return data_; }
    int Length() const { return static_cast<int>(length_); }

  private:
    static size_t lengthOf(const MCHAR* text) {
        size_t length = 0;
        while (text != nullptr && text[length] != 0)
            ++length;
        return length;
    }

    size_t length_;
    MCHAR* data_;
};
typedef WStr MSTR;

// What indexing a table outside its items throws.
class TabOutOfRangeException {};

// A table of plain items.
template <class T>
class Tab {
  public:
    Tab() = default;
    Tab(const Tab& other) { Append(other.count_, other.items_); }
    Tab& operator=(const Tab& other) {
        if (this == &other) return *this;
        count_ = 0;
        Append(other.count_, other.items_);
        return *this;
    }
    ~Tab() { delete[] items_; }

    int Count() const { return count_; }

    T& operator[](ptrdiff_t index) const {
        if (index < 0 || index >= count_) throw TabOutOfRangeException();
        return items_[index];
    }

    // Adds `number` items at the end and answers where they begin.
    int Append(int number, const T* items) {
        if (count_ + number > capacity_) grow(count_ + number);
        for (int i = 0; i < number; ++i)
            items_[count_ + i] = items[i];
        count_ += number;
        return count_ - number;
    }

  private:
    void grow(int needed) {
        const int capacity = needed > 2 * capacity_ ? needed : 2 * capacity_;
        T* items = new T[static_cast<size_t>(capacity)];
        for (int i = 0; i < count_; ++i)
            items[i] = items_[i];
        delete[] items_;
        items_ = items;
        capacity_ = capacity;
    }

    int count_ = 0;
    int capacity_ = 0;
    T* items_ = nullptr;
};

typedef ULONG SClass_ID;
#define LIGHT_CLASS_ID 0x30
#define SCENE_EXPORT_CLASS_ID 0xA20

class Class_ID {
  public:
    Class_ID(ULONG a, ULONG b) : a_(a), b_(b) {}
    ULONG PartA() const { return a_; }
    ULONG PartB() const { return b_; }
    bool operator==(const Class_ID& other) const { return a_ == other.a_ && b_ == other.b_; }
    bool operator!=(const Class_ID& other) const { return !(*this == other); }

  private:
    ULONG a_;
    ULONG b_;
};

// The identities of the classes that are asked for.
#define TRIOBJ_CLASS_ID 0x0009
#define BMTEX_CLASS_ID 0x0240
