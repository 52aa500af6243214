#pragma once

#include <windows.h>

#include <exception>
#include <new>

namespace tandril::com {

// What ends a call with that result and no words of its own.
struct ComError {
    HRESULT result;
};

inline void requireSuccess(HRESULT result) {
    if (FAILED(result)) throw ComError{result};
}

// Makes the text the error information of this thread. Returns E_FAIL.
HRESULT reportFault(const char* text) noexcept;

// Runs what returns a result, and turns into one whatever it throws: nothing but results leaves
// the component.
template <class Body>
HRESULT guarded(Body body) noexcept {
    try {
        return body();
    } catch (const ComError& error) {
        return error.result;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& fault) {
        return reportFault(fault.what());
    } catch (...) {
        return E_UNEXPECTED;
    }
}

}  // namespace tandril::com
