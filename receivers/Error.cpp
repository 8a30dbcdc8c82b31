#include "receivers/Error.h"

#include <utility>

Error::Error(std::string message) : m_message(std::move(message)) {}

const char* Error::what() const noexcept
{
    return m_message.c_str();
}
