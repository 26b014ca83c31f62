#pragma once

#include <cstddef>
#include <set>
#include <string>

/// The statements that read messages and attachments, fitted to the columns that a database has.
namespace vorn {

/// Result columns of the message statement.
enum MessageColumn {
    messageRowID,
    messageGuid,
    messageText,
    messageAttributedBody,
    messageIsFromMe,
    messageDate,
    messageService,
    messageAssociatedType,
    messageItemType,
    messageDateRetracted,
    messageDateEdited,
    messageThreadOriginator,
    messageChat,
};

/// Result columns of the attachment statement.
enum AttachmentColumn { attachmentMessage, attachmentMIMEType, attachmentTypeIdentifier };

/// "?, ?, ?" for three chats.
std::string placeholders(std::size_t count);

/// `columns` are those of the table message, `marks` the placeholders for the chats.
std::string messageStatement(const std::set<std::string>& columns, const std::string& marks);

/// `columns` are those of the table attachment.
std::string attachmentStatement(const std::set<std::string>& columns, const std::string& marks);

} // namespace vorn
