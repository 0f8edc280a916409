#pragma once

#include "simulation/wmi_object.h"

#include <windows.h>

#include <wbemidl.h>

namespace simulation {

// The methods of WMI's interfaces that the library does not need. Calling one is an error.

class RefusingServices : public WmiObjectOf<IWbemServices> {
    using Text = const BSTR;
    using Context = IWbemContext*;
    using Sink = IWbemObjectSink*;
    using Result = IWbemCallResult**;
    using Object = IWbemClassObject*;
    using Enumeration = IEnumWbemClassObject**;

public:
    explicit RefusingServices(WmiProvider& owner) : WmiObjectOf(owner, "IWbemServices") {}

#define REFUSED(method, ...)                                                                       \
    HRESULT STDMETHODCALLTYPE method(__VA_ARGS__) override {                                       \
        return refuse(#method);                                                                    \
    }
    REFUSED(OpenNamespace, Text, LONG, Context, IWbemServices**, Result)
    REFUSED(CancelAsyncCall, Sink)
    REFUSED(QueryObjectSink, LONG, IWbemObjectSink**)
    REFUSED(GetObject, Text, LONG, Context, Object*, Result)
    REFUSED(GetObjectAsync, Text, LONG, Context, Sink)
    REFUSED(PutClass, Object, LONG, Context, Result)
    REFUSED(PutClassAsync, Object, LONG, Context, Sink)
    REFUSED(DeleteClass, Text, LONG, Context, Result)
    REFUSED(DeleteClassAsync, Text, LONG, Context, Sink)
    REFUSED(CreateClassEnum, Text, LONG, Context, Enumeration)
    REFUSED(CreateClassEnumAsync, Text, LONG, Context, Sink)
    REFUSED(PutInstance, Object, LONG, Context, Result)
    REFUSED(PutInstanceAsync, Object, LONG, Context, Sink)
    REFUSED(DeleteInstance, Text, LONG, Context, Result)
    REFUSED(DeleteInstanceAsync, Text, LONG, Context, Sink)
    REFUSED(CreateInstanceEnum, Text, LONG, Context, Enumeration)
    REFUSED(CreateInstanceEnumAsync, Text, LONG, Context, Sink)
    REFUSED(ExecQueryAsync, Text, Text, LONG, Context, Sink)
    REFUSED(ExecNotificationQuery, Text, Text, LONG, Context, Enumeration)
    REFUSED(ExecNotificationQueryAsync, Text, Text, LONG, Context, Sink)
    REFUSED(ExecMethod, Text, Text, LONG, Context, Object, Object*, Result)
    REFUSED(ExecMethodAsync, Text, Text, LONG, Context, Object, Sink)
};

class RefusingEnumerator : public WmiObjectOf<IEnumWbemClassObject> {
public:
    explicit RefusingEnumerator(WmiProvider& owner) : WmiObjectOf(owner, "IEnumWbemClassObject") {}

    REFUSED(Reset)
    REFUSED(NextAsync, ULONG, IWbemObjectSink*)
    REFUSED(Clone, IEnumWbemClassObject**)
    REFUSED(Skip, LONG, ULONG)
};

class RefusingClassObject : public WmiObjectOf<IWbemClassObject> {
    using Name = LPCWSTR;
    using Object = IWbemClassObject*;

public:
    explicit RefusingClassObject(WmiProvider& owner) : WmiObjectOf(owner, "IWbemClassObject") {}

    REFUSED(GetQualifierSet, IWbemQualifierSet**)
    REFUSED(Put, Name, LONG, VARIANT*, CIMTYPE)
    REFUSED(Delete, Name)
    REFUSED(GetNames, Name, LONG, VARIANT*, SAFEARRAY**)
    REFUSED(BeginEnumeration, LONG)
    REFUSED(Next, LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*)
    REFUSED(EndEnumeration)
    REFUSED(GetPropertyQualifierSet, Name, IWbemQualifierSet**)
    REFUSED(Clone, Object*)
    REFUSED(GetObjectText, LONG, BSTR*)
    REFUSED(SpawnDerivedClass, LONG, Object*)
    REFUSED(SpawnInstance, LONG, Object*)
    REFUSED(CompareTo, LONG, Object)
    REFUSED(GetPropertyOrigin, Name, BSTR*)
    REFUSED(InheritsFrom, Name)
    REFUSED(GetMethod, Name, LONG, Object*, Object*)
    REFUSED(PutMethod, Name, LONG, Object, Object)
    REFUSED(DeleteMethod, Name)
    REFUSED(BeginMethodEnumeration, LONG)
    REFUSED(NextMethod, LONG, BSTR*, Object*, Object*)
    REFUSED(EndMethodEnumeration)
    REFUSED(GetMethodQualifierSet, Name, IWbemQualifierSet**)
    REFUSED(GetMethodOrigin, Name, BSTR*)
#undef REFUSED
};

} // namespace simulation
