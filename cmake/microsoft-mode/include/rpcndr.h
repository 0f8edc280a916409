// Interfaces have their identifier, which __uuidof reads.
#pragma once
#pragma GCC system_header
#include_next <rpcndr.h>
#undef MIDL_INTERFACE
#define MIDL_INTERFACE(text) struct __declspec(uuid(text)) __declspec(novtable)
