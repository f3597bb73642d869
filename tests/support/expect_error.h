// Checks that an operation raises one certain CErr3D.
#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <string>

#include "varnel/foundation/error.h"

namespace varnel::test {

/// Whether `operation()` throws a CErr3D with exactly these three values. Leaves error reports off.
template <class Operation>
testing::AssertionResult Raises(CErr3DTypes type, CErr3DClass cls, const CString& name,
                                Operation&& operation) {
    CErr3D::SetErrorReportMode(0);
    testing::AssertionResult result = testing::AssertionFailure() << "nothing was raised";
    try {
        operation();
    } catch (const CErr3D& e) {
        result = e.m_ErrorType == type && e.m_ErrorClass == cls && e.m_FunctionName == name
                     ? testing::AssertionSuccess()
                     : testing::AssertionFailure()
                           << "raised " << CErr3D::GetErrorDescription(e.m_ErrorType) << ", class "
                           << e.m_ErrorClass << ", " << e.m_FunctionName;
    }
    return result;
}

/// The sentence of the error that `operation()` throws, caught as any host catches exceptions;
/// empty when nothing is thrown. Leaves error reports off.
template <class Operation>
std::string WhatOf(Operation&& operation) {
    CErr3D::SetErrorReportMode(0);
    try {
        operation();
    } catch (const std::exception& e) {
        return e.what();
    }
    return {};
}

/// Fails the test unless `operation()` throws a CErr3D with exactly these three values.
template <class Operation>
void ExpectError(CErr3DTypes type, CErr3DClass cls, const CString& name, Operation&& operation) {
    EXPECT_TRUE(Raises(type, cls, name, operation));
}

}  // namespace varnel::test
