#include "surface/com/class_factory.h"

#include <unknwn.h>

#include <atomic>

#include "surface/com/com_client.h"
#include "surface/com/com_error.h"
#include "surface/com/server.h"

namespace tandril::com {
namespace {

class ClassFactory final : public IClassFactory {
  public:
    ClassFactory() = default;
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool isKnown = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = isKnown ? this : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : createComClient(iid, object);
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock) {
            Server::instance().addUse();
        } else {
            Server::instance().removeUse();
        }
        return S_OK;
    }

  private:
    ~ClassFactory() = default;

    const ServerUse use_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace

HRESULT createClassFactory(REFIID iid, void** object) noexcept {
    return guarded([&] {
        auto* factory = new ClassFactory;
        const HRESULT result = factory->QueryInterface(iid, object);
        factory->Release();
        return result;
    });
}

}  // namespace tandril::com
