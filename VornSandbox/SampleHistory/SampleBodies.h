#pragma once

#include "VornSandbox/SampleHistory/AttributedBody.h"
#include "VornSandbox/SampleHistory/SampleMessage.h"
#include "VornSandbox/SampleHistory/SampleRandom.h"

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// The blobs of messages as Messages writes them: attributed bodies with the runs that links, attachments and bold
/// words make, summaries, and the content of link balloons. Threads: any.
namespace sampleBodies {

/// An attributed body whose first word is bold.
ByteBuffer withBoldWord(std::string_view text, AttributedBodyKind kind);

/// `text` holds `link`, which is marked as such wherever it stands.
ByteBuffer withLink(std::string_view text, std::string_view link, AttributedBodyKind kind);

/// `text` begins with one U+FFFC for each attachment.
ByteBuffer withAttachments(std::string_view text, const std::vector<SampleAttachment>& attachments,
                           AttributedBodyKind kind);

ByteBuffer plainSummary();
ByteBuffer reactionSummary(std::string_view quoted);

/// The summary of an edited message: the bodies it had, oldest first.
ByteBuffer editSummary(const ByteBuffer& before, const ByteBuffer& after, std::int64_t secondsOfEdit);

/// The summary of a message that was taken back by editing every part of it away.
ByteBuffer retractedSummary();

/// What the balloon of a link shows. `random` gives it a length of about half to one kilobyte.
ByteBuffer linkPayload(std::string_view link, SampleRandom& random);

} // namespace sampleBodies

} // namespace vorn
