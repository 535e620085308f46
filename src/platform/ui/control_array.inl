// Template members of ControlArray (included by controls.h).
#pragma once

#include "runtime/errors.h"

#include <type_traits>

namespace ui {

// Element errors of control arrays, with the toolkit's numbers.
[[noreturn]] void RaiseNoElement(const std::wstring& name, int index);
[[noreturn]] void RaiseAlreadyLoaded();
[[noreturn]] void RaiseDesignElement();
// Loads the owner form when needed and gives a new element its window.
void LoadArrayElement(Form* owner, Control& el);
void UnloadArrayElement(Control& el);
// The form unloads the run-time elements of its arrays when it unloads.
void RegisterArrayUnloader(Form* owner, std::function<void()> unload);

template <class T>
ControlArray<T>::ControlArray(Form* owner, std::wstring name)
    : owner_(owner), name_(std::move(name)) {
    RegisterArrayUnloader(owner_, [this] { UnloadRuntime(); });
}

template <class T> template <class... A> T& ControlArray<T>::Design(int index, A&&... args) {
    auto el = std::make_unique<T>(owner_, name_, std::forward<A>(args)...);
    el->SetIndex(index);
    Bind(*el, index);
    T& ref = *el;
    items_[index] = std::move(el);
    design_[index] = true;
    return ref;
}

template <class T> T& ControlArray<T>::operator[](int index) {
    auto it = items_.find(index);
    if (it == items_.end()) RaiseNoElement(name_, index);
    return *it->second;
}

template <class T> const T& ControlArray<T>::operator[](int index) const {
    auto it = items_.find(index);
    if (it == items_.end()) RaiseNoElement(name_, index);
    return *it->second;
}

template <class T> T& ControlArray<T>::Load(int index) {
    if (items_.count(index)) RaiseAlreadyLoaded();
    if constexpr (std::is_constructible_v<T, Form*, std::wstring>) {
        auto el = std::make_unique<T>(owner_, name_);
        el->SetIndex(index);
        if (!items_.empty()) el->CopyFrom(*items_.begin()->second);
        el->SetVisible(false);
        Bind(*el, index);
        T& ref = *el;
        items_[index] = std::move(el);
        LoadArrayElement(owner_, ref);
        return ref;
    } else {
        RaiseAlreadyLoaded();
    }
}

template <class T> void ControlArray<T>::Unload(int index) {
    auto it = items_.find(index);
    if (it == items_.end()) RaiseNoElement(name_, index);
    if (design_.count(index)) RaiseDesignElement();
    UnloadArrayElement(*it->second);
    items_.erase(it);
}

template <class T> void ControlArray<T>::UnloadRuntime() {
    for (auto it = items_.begin(); it != items_.end();) {
        if (design_.count(it->first)) {
            ++it;
            continue;
        }
        UnloadArrayElement(*it->second);
        it = items_.erase(it);
    }
}

template <class T> void ControlArray<T>::Bind(T& el, int index) {
    el.OnClick = [this, index] {
        if (OnClick) OnClick(index);
    };
    el.OnDblClick = [this, index] {
        if (OnDblClick) OnDblClick(index);
    };
    el.OnMouseDown = [this, index](const MouseEvent& e) {
        if (OnMouseDown) OnMouseDown(index, e);
    };
    el.OnMouseMove = [this, index](const MouseEvent& e) {
        if (OnMouseMove) OnMouseMove(index, e);
    };
    el.OnMouseUp = [this, index](const MouseEvent& e) {
        if (OnMouseUp) OnMouseUp(index, e);
    };
    if constexpr (requires { el.OnChange; }) {
        el.OnChange = [this, index] {
            if (OnChange) OnChange(index);
        };
    }
    if constexpr (requires { el.OnKeyDown; }) {
        el.OnKeyDown = [this, index](int16_t& key, int16_t shift) {
            if (OnKeyDown) OnKeyDown(index, key, shift);
        };
    }
}

} // namespace ui
