#include "Errors.h"

#include <cerrno>

int
StatusFromErrno(int error)
{
	switch (error) {
		case 0:
			return B_OK;
		case ENOMEM:
			return B_NO_MEMORY;
		case EIO:
			return B_IO_ERROR;
		case EACCES:
		case EPERM:
			return B_PERMISSION_DENIED;
		case EINVAL:
		case ERANGE:
			return B_BAD_VALUE;
		case ETIMEDOUT:
			return B_TIMED_OUT;
		case EINTR:
			return B_INTERRUPTED;
		case EAGAIN:
			return B_WOULD_BLOCK;
		case EBUSY:
			return B_BUSY;
		case ENOENT:
			return B_ENTRY_NOT_FOUND;
		case EEXIST:
			return B_FILE_EXISTS;
		case ENAMETOOLONG:
			return B_NAME_TOO_LONG;
		case ENOTDIR:
			return B_NOT_A_DIRECTORY;
		case ENOTEMPTY:
			return B_DIRECTORY_NOT_EMPTY;
		case ENOSPC:
		case EDQUOT:
			return B_DEVICE_FULL;
		case EROFS:
			return B_READ_ONLY_DEVICE;
		case EISDIR:
			return B_IS_A_DIRECTORY;
		case EMFILE:
		case ENFILE:
			return B_NO_MORE_FDS;
		case EXDEV:
			return B_CROSS_DEVICE_LINK;
		case ELOOP:
			return B_LINK_LIMIT;
		case EPIPE:
			return B_BUSTED_PIPE;
		case ENOTSUP:
			return B_NOT_SUPPORTED;
		case E2BIG:
			return B_BUFFER_OVERFLOW;
		case ENODATA:
			return B_ENTRY_NOT_FOUND;
		case ESRCH:
			return B_BAD_THREAD_ID;
		default:
			return B_ERROR;
	}
}

const char*
strerror_status(int status)
{
	switch (status) {
		case B_OK:
			return "No error";
		case B_NO_MEMORY:
			return "Out of memory";
		case B_IO_ERROR:
			return "I/O error";
		case B_PERMISSION_DENIED:
			return "Permission denied";
		case B_BAD_INDEX:
			return "Index out of range";
		case B_BAD_TYPE:
			return "Bad type";
		case B_BAD_VALUE:
			return "Invalid argument";
		case B_NAME_NOT_FOUND:
			return "Name not found";
		case B_TIMED_OUT:
			return "Operation timed out";
		case B_INTERRUPTED:
			return "Interrupted";
		case B_WOULD_BLOCK:
			return "Operation would block";
		case B_NO_INIT:
			return "Not initialised";
		case B_BUSY:
			return "Device or resource busy";
		case B_NOT_ALLOWED:
			return "Operation not allowed";
		case B_BAD_DATA:
			return "Bad data";
		case B_BAD_THREAD_ID:
			return "No such thread";
		case B_FILE_EXISTS:
			return "File exists";
		case B_ENTRY_NOT_FOUND:
			return "Entry not found";
		case B_NAME_TOO_LONG:
			return "Name too long";
		case B_NOT_A_DIRECTORY:
			return "Not a directory";
		case B_DIRECTORY_NOT_EMPTY:
			return "Directory not empty";
		case B_DEVICE_FULL:
			return "No space left on device";
		case B_READ_ONLY_DEVICE:
			return "Read-only file system";
		case B_IS_A_DIRECTORY:
			return "Is a directory";
		case B_CROSS_DEVICE_LINK:
			return "Cross-device link";
		case B_NOT_SUPPORTED:
			return "Not supported";
		case B_BUFFER_OVERFLOW:
			return "Value too large";
		case B_NOT_A_MESSAGE:
			return "Not a message";
		default:
			return "General error";
	}
}
