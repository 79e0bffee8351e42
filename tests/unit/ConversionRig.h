#pragma once

#include <memory>
#include <tuple>
#include <vector>

#include "recording/convertToQdseq.h"
#include "tests/support/Test.h"
#include "tests/support/movieFiles.h"

/// Converts movies in a temporary folder, always "a.rqs" to "a.qdseq", and records the calls of the delegate.
class ConversionRig : public Test
{
    Q_OBJECT

protected:
    using Calls = std::vector<std::tuple<int, unsigned int, unsigned int>>; ///< Stage, done and total of each call.
    using Progress = hlx::delegate<int(int, unsigned int, unsigned int)>;

protected slots:
    void init()
    {
        Test::init();
        m_folder = std::make_unique<movies::Folder>();
        m_calls.clear();
    }

protected:
    /// A delegate that records its calls and then returns what `answer` returns for the number of the call, from 0.
    template <class Answer> Progress recorder(Answer answer)
    {
        return Progress::FromLamda([this, answer](int stage, unsigned int done, unsigned int total) {
            m_calls.emplace_back(stage, done, total);
            return answer(m_calls.size() - 1);
        });
    }

    int convert(const Progress &progress, const hlx::CString &calFile = {})
    {
        return ConvertToQdseq(m_folder->path("a.rqs"), m_folder->path("a.qdseq"), calFile, progress);
    }
    int convert()
    {
        return convert(recorder([](std::size_t) { return 0; }));
    }
    int convertWith(const char *calFile)
    {
        return convert(recorder([](std::size_t) { return 0; }), m_folder->path(calFile));
    }

    /// The converted movie; null if there is none.
    std::unique_ptr<hlx::file::MovieReader> converted() const
    {
        return m_folder->open(hlx::file::qdseqFormat, "a.qdseq");
    }
    /// The number of frames in the head of the converted movie, which is written when it is closed.
    unsigned int countedFrames() const
    {
        return qFromLittleEndian<quint32>(m_folder->content("a.qdseq").constData() + 12);
    }
    /// The calls of a conversion of that many frames.
    static Calls callsFor(unsigned int frames)
    {
        Calls calls{{2, 0, frames}};
        for (unsigned int frame = 0; frame < frames; ++frame)
            calls.emplace_back(2, frame, frames);
        return calls;
    }

    std::unique_ptr<movies::Folder> m_folder;
    Calls m_calls;
};
