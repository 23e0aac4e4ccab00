// Memory for the XML library, which is helpless when there is none left: an
// allocation that fails leaves its objects in pieces, which are neither safe to
// destroy nor to be found again. So the memory itself keeps count of them.
#ifndef TVML_STAGING_XML_MEMORY_H
#define TVML_STAGING_XML_MEMORY_H

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/internal/MemoryManagerImpl.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace tvml {

// The memory of one parse. What the library has not freed goes with this object.
//
// It also counts the library's readers: every entity that is expanded takes one,
// also inside a document type, where the library knows no limit.
class ParseMemory final : public xercesc::MemoryManager {
public:
    // `readersExhausted` is called when a reader is wanted beyond the limits,
    // and throws.
    ParseMemory(std::size_t mostReaders, std::size_t mostOpenReaders,
                std::function<void()> readersExhausted)
        : readersLeft_(mostReaders), mostOpenReaders_(mostOpenReaders),
          readersExhausted_(std::move(readersExhausted)) {}
    ParseMemory(const ParseMemory&) = delete;
    ParseMemory& operator=(const ParseMemory&) = delete;
    ~ParseMemory() override {
        while (first_ != nullptr) {
            ::operator delete(std::exchange(first_, first_->next));
        }
    }

    // At most so many readers from now on.
    void limitReaders(std::size_t most) { readersLeft_ = std::min(readersLeft_, most); }

    void* allocate(XMLSize_t size) override {
        if (isReader(size)) {
            if (readersLeft_ == 0 || openReaders_ == mostOpenReaders_) {
                readersExhausted_();
            }
            --readersLeft_;
        }
        void* memory =
            size <= kLargest ? ::operator new(sizeof(Block) + size, std::nothrow) : nullptr;
        if (memory == nullptr) {
            throw xercesc::OutOfMemoryException();
        }
        auto* block = new (memory) Block{first_, nullptr, size};
        if (first_ != nullptr) {
            first_->previous = block;
        }
        first_ = block;
        openReaders_ += isReader(size) ? 1 : 0;
        return block + 1;
    }

    void deallocate(void* memory) override {
        if (memory == nullptr) {
            return;
        }
        Block* block = static_cast<Block*>(memory) - 1;
        openReaders_ -= isReader(block->size) ? 1 : 0;
        (block->previous != nullptr ? block->previous->next : first_) = block->next;
        if (block->next != nullptr) {
            block->next->previous = block->previous;
        }
        ::operator delete(block);
    }

    // An exception may outlive the parse.
    xercesc::MemoryManager* getExceptionMemoryManager() override {
        return xercesc::XMLPlatformUtils::fgMemoryManager;
    }

private:
    struct alignas(std::max_align_t) Block {
        Block* next;
        Block* previous;
        XMLSize_t size;
    };

    static constexpr XMLSize_t kLargest = std::numeric_limits<XMLSize_t>::max() - sizeof(Block);

    // The library may put a word of its own in front. Nothing else of this size
    // is frequent, and a few more do not matter.
    static bool isReader(XMLSize_t size) {
        return size >= sizeof(xercesc::XMLReader) &&
               size <= sizeof(xercesc::XMLReader) + sizeof(std::max_align_t);
    }

    Block* first_ = nullptr;
    std::size_t openReaders_ = 0;
    std::size_t readersLeft_;
    const std::size_t mostOpenReaders_;
    const std::function<void()> readersExhausted_;
};

// The memory in which the library is initialised. A failure on the way could not
// be undone, so there is none: when the memory is exhausted a reserve steps in,
// and the complete library can be terminated in good order.
class StartMemory final : public xercesc::MemoryManagerImpl {
public:
    StartMemory() : reserve_(std::make_unique<std::byte[]>(kReserve)) {
        // Two small objects of the library come from elsewhere: there must be
        // room for them, too.
        ::operator delete(::operator new(kElsewhere));
    }

    bool reserveUsed() const { return used_ != 0; }

    void* allocate(XMLSize_t size) override {
        if (void* memory = ::operator new(size, std::nothrow); memory != nullptr) {
            return memory;
        }
        constexpr XMLSize_t kUnit = alignof(std::max_align_t);
        const XMLSize_t wanted = (size + kUnit - 1) / kUnit * kUnit;
        if (wanted < size || wanted > kReserve - used_) {
            throw xercesc::OutOfMemoryException();
        }
        return reserve_.get() + std::exchange(used_, used_ + wanted);
    }

    void deallocate(void* memory) override {
        const std::less<const void*> before;
        if (before(memory, reserve_.get()) || !before(memory, reserve_.get() + kReserve)) {
            ::operator delete(memory);
        }
    }

    // Replaces a memory that needed no reserve by the library's own, which can do
    // without us: other users of the library may keep it longer than this code is
    // loaded. The library goes on using the address.
    static void retire(StartMemory* memory) {
        static_assert(sizeof(xercesc::MemoryManagerImpl) <= sizeof(StartMemory));
        memory->~StartMemory();
        new (static_cast<void*>(memory)) xercesc::MemoryManagerImpl;
    }

private:
    static constexpr XMLSize_t kReserve = XMLSize_t{1} << 20;
    static constexpr XMLSize_t kElsewhere = XMLSize_t{1} << 16;

    std::unique_ptr<std::byte[]> reserve_;
    XMLSize_t used_ = 0;
};

} // namespace tvml

#endif
