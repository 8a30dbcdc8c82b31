#ifndef GNSS_RECEIVERS_ERROR_H
#define GNSS_RECEIVERS_ERROR_H

#include <exception>
#include <string>

// Raised when a mode that needs a NovAtel receiver does not find one; the message is for the
// user, as it stands.
class Error : public std::exception {
public:
    explicit Error(std::string message);

    const char* what() const noexcept override;

private:
    std::string m_message;
};

#endif
