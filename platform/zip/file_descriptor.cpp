#include <zip/file_descriptor.h>

#include <unistd.h>

namespace tessaly::zip {

FileDescriptor::~FileDescriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

} // namespace tessaly::zip
